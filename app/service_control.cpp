#include "app/service_control.h"

#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "util/command_words.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using platform::ServiceState;

Text GetServiceConfig() try { return platform::RegisteredServiceCommandLine(kServiceName); } catch (...) {
    HandleError("ServiceControl.GetServiceConfig");
    return "";
}

}  // namespace

int StartService() try { return platform::LaunchService(kServiceName); } catch (...) {
    const int number = CurrentError().Number;
    HandleError("ServiceControl.StartService");
    return number;
}

int StopService() try { return platform::SendStopControl(kServiceName); } catch (...) {
    const int number = CurrentError().Number;
    HandleError("ServiceControl.StopService");
    return number;
}

ServiceState GetServiceStatus() try {
    ServiceState state = ServiceState::NotInstalled;
    platform::QueryServiceState(kServiceName, state);
    return state;
} catch (...) {
    HandleError("ServiceControl.GetServiceStatus");
    return ServiceState::NotInstalled;
}

bool GetServiceInstalled() try { return GetServiceStatus() != ServiceState::NotInstalled; } catch (...) {
    HandleError("ServiceControl.GetServiceInstalled");
    return false;
}

Text ServicePath() try { return GetServiceConfig(); } catch (...) {
    HandleError("ServiceControl.ServicePath");
    return "";
}

Text ServiceCommandLine() {
    const Text& target = State().UpdateTargetPath;
    return "\"" + (target.empty() ? Self() : target) + "\" -service_mode";
}

void ServiceInstalledCheck() {
    const Text installed = ServicePath();
    if (installed.empty()) return Log("Warning: Service is not installed");
    const Text theirs = FirstWord(installed), ours = FirstWord(ServiceCommandLine());
    if (!EqualsNoCase(theirs, ours))
        Log("Warning: Service is installed to \"" + theirs + "\" not \"" + ours + "\"");
}

}  // namespace rvl
