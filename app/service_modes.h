#pragma once

#include "app/run_mode.h"

namespace rvl {

/// Installs, removes, starts or stops the service, as the mode says. A failure is shown, or logged where the
/// mode is a silent one, and leaves the exit code as it is.
void RunServiceControlMode(RunMode mode);

}  // namespace rvl
