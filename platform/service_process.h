#pragma once

#include <functional>

#include "platform/text.h"

namespace rvl::platform {

/// What the service manager or the system asks of the service process, each on the event loop.
struct ServiceEvents {
    std::function<void()> start;  ///< the manager sees a running service once it is over
    std::function<void()> stop;
    std::function<void(int)> control;   ///< every control code, before stop runs for code 1
    std::function<void()> closeWindow;  ///< the window it was started from closes; nobody has to give way
};

enum class ServiceStart { Started, AlreadyRunning, Failed };

/// Makes this process the service: `start` follows from the loop, `stop` when the manager or the system asks.
ServiceStart StartServiceProcess(const Text& serviceName, ServiceEvents events);

/// Tells the manager that the service has begun to stop.
void ReportServiceStopping();

/// Tells the manager that the service has stopped and gives up the claim to be it.
void EndServiceProcess();

}  // namespace rvl::platform
