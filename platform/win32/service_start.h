#pragma once

#include <windows.h>

#include <winsvc.h>

namespace rvl::platform {

/// Waits until a service that was just started runs, for as long as it gets on with its start. 0 or the code
/// of the failure.
int AwaitRunningService(SC_HANDLE service);

}  // namespace rvl::platform
