#pragma once

#include "platform/text.h"

namespace rvl {

inline constexpr const char* kServiceName = "RVLClient";

/// The command line registered for the service; empty when it is not installed.
Text ServicePath();

/// The command line under which this executable (or, while updating, the one it replaces) is the service.
Text ServiceCommandLine();

/// Warns in the log when the installed service does not run this executable.
void ServiceInstalledCheck();

}  // namespace rvl
