#pragma once

#include <optional>

#include "platform/text.h"

namespace rvl::deployserver {

/// What a workstation tells about itself in its LOGIN.
struct Login {
    Text proof;
    Text uuid;
    Text computer;
    Text domain;
    Text commonAppData;  ///< folder
    Text discoveryMethod;
};

/// None when parameters are missing.
std::optional<Login> ParseLogin(TextView params);

/// True when the proof was made from this login and the token that the workstation was greeted with.
bool IsProofRight(const Login& login, const Text& token);

}  // namespace rvl::deployserver
