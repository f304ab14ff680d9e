#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// The system's service manager. Results are Win32 error codes, 0 for success: 5 access denied, those below,
/// and what the registry or the start of a process may fail with.

inline constexpr int kServiceNotInTime = 1053;  ///< the process ended, or did not become the service in time
inline constexpr int kServiceTableLocked = 1055;
inline constexpr int kServiceAlreadyRunning = 1056;
inline constexpr int kServiceDoesNotExist = 1060;
inline constexpr int kServiceCannotAcceptControl = 1061;  ///< it is stopping already
inline constexpr int kServiceNotActive = 1062;
inline constexpr int kServiceMarkedForDeletion = 1072;
inline constexpr int kServiceExists = 1073;

enum class ServiceState { NotInstalled = 0, Stopped = 1, StartPending = 2, StopPending = 3, Running = 4 };

/// A service in a process of its own, with normal error control.
struct ServiceDescription {
    Text name;
    Text displayName;
    Text commandLine;
    Text account;                    ///< "LocalSystem" or DOMAIN\user
    Text password;                   ///< empty for LocalSystem
    std::vector<Text> dependencies;  ///< services that have to run before
    bool automaticStart = false;     ///< with the system, otherwise on demand
    bool interactive = false;        ///< may show windows to the user
};

int RegisterService(const ServiceDescription& description);

/// The service goes at once, or is marked for deletion until it ends. Nobody stops it.
int UnregisterService(const Text& name);

/// Starts the registered command line and waits until it is the running service: at most some ten seconds, or
/// as long as it tells the manager that its next step may take.
int LaunchService(const Text& name);

/// Asks the service to stop; does not wait for it.
int SendStopControl(const Text& name);

int QueryServiceState(const Text& name, ServiceState& state);

/// The command line registered for a service; empty when it is not installed. Failures of the registry raise
/// an Error with the Win32 code.
Text RegisteredServiceCommandLine(const Text& name);

}  // namespace rvl::platform
