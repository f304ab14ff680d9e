#pragma once

#include <optional>

#include "platform/text.h"

namespace rvl::platform {

/// The value of an environment variable; ASCII letters of the name without regard to case, the exact spelling
/// first. None when there is no such variable or its value cannot become a Text.
std::optional<Text> EnvironmentVariable(TextView name);

}  // namespace rvl::platform
