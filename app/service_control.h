#pragma once

#include "platform/service_manager.h"
#include "platform/text.h"

namespace rvl {

// The module ServiceControl. Its operations return 0 or the operating system's error number. There is a
// service manager wherever the program runs: the ways of Windows 95, 98 and ME, which had none, are gone.

inline constexpr const char* kServiceName = "RVLClient";
inline constexpr const char* kServiceDisplayName = "Ravelin Client";

int StartService();  ///< returns when it runs
int StopService();   ///< sends the stop control, does not wait

/// NotInstalled also when it cannot be found out.
platform::ServiceState GetServiceStatus();
bool GetServiceInstalled();

/// The command line registered for the service; empty when it is not installed.
Text ServicePath();

/// The command line under which this executable (or, while updating, the one it replaces) is the service.
Text ServiceCommandLine();

/// Warns in the log when the installed service does not run this executable.
void ServiceInstalledCheck();

}  // namespace rvl
