#pragma once

#include <functional>

#include "platform/text.h"

namespace rvl::platform {

/// What the service manager asks of the service process, each on the event loop.
struct ServiceEvents {
    std::function<void()> start;
    std::function<void()> stop;
    std::function<void(int)> control;  ///< every control code, before stop runs for code 1
};

enum class ServiceStart { Started, AlreadyRunning, Failed };

/// Makes this process the service: `start` follows from the loop, `stop` when the manager or the system asks.
ServiceStart StartServiceProcess(ServiceEvents events);

/// Tells the manager that the service has stopped and gives up the claim to be it.
void EndServiceProcess();

/// The command line registered for a service; empty when it is not installed.
Text RegisteredServiceCommandLine(const Text& serviceName);

}  // namespace rvl::platform
