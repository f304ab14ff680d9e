#pragma once

#include <windows.h>

#include <winsvc.h>

namespace rvl::platform {

/// What the service manager is told of this process. From any thread; nothing is told before
/// BeginServiceStatus or after EndServiceStatus.

void BeginServiceStatus(SERVICE_STATUS_HANDLE manager);  ///< the service has begun to start
void AdvanceServiceStatus(DWORD state);                  ///< a state that is passed already stays so
void EndServiceStatus(DWORD exitCode);                   ///< the service has stopped

}  // namespace rvl::platform
