#pragma once

#include <vector>

#include "deploy/local_database.h"

namespace rvl {

/// Whether a front end can be started for a user, and how.
struct StartDecision {
    Text problem;             ///< what the user is told when it cannot; empty when it can
    std::vector<Text> order;  ///< otherwise the parameters of the helper's START_FRONTEND
};

/// Looks at the newest version that the user has, at its files and at the installed versions of Access.
StartDecision DecideStart(LocalDatabase& database, const Text& username, std::int32_t frontendId);

}  // namespace rvl
