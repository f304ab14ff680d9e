#pragma once

#include <windows.h>

#include <winsvc.h>

namespace rvl::platform {

/// Waits, at most some ten seconds, until a service that was just started runs. 0 or the code of the failure.
int AwaitRunningService(SC_HANDLE service);

}  // namespace rvl::platform
