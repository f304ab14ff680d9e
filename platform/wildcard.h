#pragma once

#include "platform/text.h"

namespace rvl::platform {

/// Matches * and ? without regard to case.
bool MatchesWildcard(TextView name, TextView pattern);

}  // namespace rvl::platform
