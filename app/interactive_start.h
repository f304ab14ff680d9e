#pragma once

#include "platform/text.h"

namespace rvl {

/// Starts the helper, the switchboard or one front end. Returns the exit code; errors are reported and raised
/// again.
int Main_Normal(const Text& commandLine);

}  // namespace rvl
