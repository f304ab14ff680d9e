#include "app/service_installation.h"

#include "app/event_source.h"
#include "app/helper_run_entry.h"
#include "app/service_control.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "runtime/wait_ticks.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/scoped_state.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr std::uint64_t kPatience = 5000;
constexpr std::int64_t kPause = 500;

Text QualifiedAccount(const Text& account) {
    const bool complete = account == kLocalSystem || account.find('\\') != Text::npos;
    return complete ? account : DomainName() + "\\" + account;
}

int InstallServiceNT(const platform::ServiceDescription& description) try {
    return platform::RegisterService(description);
} catch (...) {
    const int number = CurrentError().Number;
    HandleError("ServiceControl.InstallServiceNT");
    return number;
}

/// A service that does not run cannot be stopped, and is deleted all the same.
int DeleteService() try {
    platform::SendStopControl(kServiceName);
    return platform::UnregisterService(kServiceName);
} catch (...) {
    const int number = CurrentError().Number;
    HandleError("ServiceControl.DeleteService");
    return number;
}

void RemoveOtherInstallation() {
    const Text installed = ServicePath();
    if (installed.empty() || EqualsNoCase(installed, ServiceCommandLine())) return;
    StopService();
    RemoveService();
}

int InstallOnceDeleted() {
    const std::uint64_t deadline = GetTickCountEx() + kPatience;
    int result = InstallService();
    while (result == platform::kServiceMarkedForDeletion && GetTickCountEx() < deadline) {
        WaitTicks(kPause);
        result = InstallService();
    }
    return result;
}

void LogFailure(const Text& action, int result, int expected) {
    if (result != 0 && result != expected) Log("Error " + action + " service: " + GetErrorString(result));
}

}  // namespace

int InstallService(const Text& account, const Text& password, bool automaticStart,
                   const std::vector<Text>& dependencies, bool interactive) {
    const int result =
        InstallServiceNT({kServiceName, kServiceDisplayName, ServiceCommandLine(), QualifiedAccount(account),
                          password, dependencies, automaticStart, interactive});
    if (result == 0 || result == platform::kServiceExists) ServiceControl_ServiceInstalled(result == 0);
    return result;
}

int InstallService() {
    return InstallService(kLocalSystem, "", true, {}, false);
}

int RemoveService() {
    const int result = DeleteService();
    if (result == 0 || result == platform::kServiceDoesNotExist) ServiceControl_ServiceRemoved(result == 0);
    return result;
}

void SilentInstallService() try {
    const ScopedFlag silent(State().SuppressErrorDialog);
    RemoveOtherInstallation();
    LogFailure("installing", InstallOnceDeleted(), platform::kServiceExists);
    RegisterEventSource();
    LogFailure("starting", StartService(), platform::kServiceAlreadyRunning);
} catch (...) {
    HandleError("ServiceControl.SilentInstallService");
}

void SilentRemoveService() {
    const ScopedFlag silent(State().SuppressErrorDialog);
    StopService();
    LogFailure("removing", RemoveService(), platform::kServiceDoesNotExist);
}

}  // namespace rvl
