#pragma once

#include <functional>

#include "platform/text.h"

namespace rvl::platform {

/// Connects this process, which the service manager has started, to the manager; the service's state is
/// tracked by service_status.h from then on. `control` gets the manager's controls on a thread of the system.
/// 0, or 1063 when the manager has not started this process, or another code of the system.
int ConnectToServiceManager(const Text& serviceName, std::function<void(int)> control);

/// Tells the manager that the service has stopped, 0 or the reason. Nothing without a connection.
void DisconnectFromServiceManager(int exitCode);

}  // namespace rvl::platform
