#include "app/service_modes.h"

#include "app/event_source.h"
#include "app/service_control.h"
#include "app/service_installation.h"
#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "runtime/process_state.h"
#include "runtime/tools_library.h"
#include "util/error_text.h"
#include "util/scoped_state.h"

namespace rvl {
namespace {

/// What the user is told of one interactive operation.
struct Outcome {
    const char* done;
    const char* failing;        ///< "installing", as in "Error installing service: "
    int harmlessResult = 0;     ///< a result that is no error ...
    const char* harmless = "";  ///< ... and its text
};

void ShowOutcome(int result, const Outcome& outcome) {
    if (result == 0)
        MsgBox(outcome.done, kIconInformation);
    else if (result == outcome.harmlessResult)
        MsgBox(outcome.harmless, kIconExclamation);
    else
        MsgBox(Text("Error ") + outcome.failing + " service: " + GetErrorString(result), kIconCritical);
}

/// Whoever may not install the service may not register the event source either: one box tells.
void Install() {
    const int result = InstallService();
    {
        const ScopedFlag silent(State().SuppressErrorDialog);
        RegisterEventSource();
    }
    ShowOutcome(result, {"Service Installed", "installing", platform::kServiceExists,
                         "Service is already installed"});
}

void Remove() {
    ShowOutcome(RemoveService(),
                {"Service Removed", "removing", platform::kServiceDoesNotExist, "Service is not installed"});
}

void RunSilentMode(RunMode mode) {
    if (mode == RunMode::Deploy) RegisterDependancies();
    mode == RunMode::RemoveSilently ? SilentRemoveService() : SilentInstallService();
    Log("Terminating");
}

}  // namespace

void RunServiceControlMode(RunMode mode) {
    switch (mode) {
        case RunMode::Install:
            return Install();
        case RunMode::Remove:
            return Remove();
        case RunMode::StartService:
            return ShowOutcome(StartService(), {"Service Started", "starting"});
        case RunMode::StopService:
            return ShowOutcome(StopService(), {"Service Stopped", "stopping"});
        default:
            return RunSilentMode(mode);
    }
}

}  // namespace rvl
