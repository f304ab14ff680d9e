#include "app/start_up.h"

#include "app/client_service.h"
#include "app/interactive_start.h"
#include "app/run_mode.h"
#include "app/service_control.h"
#include "app/service_modes.h"
#include "app/update_mode.h"
#include "app/update_state.h"
#include "app/upgrade_cleanup.h"
#include "platform/process.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "runtime/terminate.h"
#include "runtime/tools_library.h"
#include "ui/window_dialogs.h"
#include "util/command_words.h"
#include "util/handle_error.h"
#include "util/random_text.h"

namespace rvl {
namespace {

void LogStart(const Text& commandLine) {
    Log(Self() + " starting (" + VersionString() + ")", true);
    Log("Command line parameters: " + commandLine, true);
    Log("Running as user: " + FullUsername(), true);
    Log("Operating system: " + OSVersionString());
}

/// A service that the service manager restarts after a self-update learns here that it has to clean up.
void ApplyPendingUpdate(Text& commandLine) {
    if (commandLine != "-service_mode") return;
    const Text pending = GetTempBinaryPath();
    if (!pending.empty()) commandLine = "-service_mode-after-update \"" + pending + "\"";
}

int RunService() {
    State().LogTag = "Service";
    State().ServiceMode = true;
    ServiceInstalledCheck();
    return StartServiceMode();
}

int RunServiceAfterUpdate(const Text& commandLine) {
    State().DebugMode = FirstWord(commandLine) == "-service_mode-after-update-debug";
    Log("Now running on new binary");
    SetUpdating(false);
    State().UpgradeTempPath = FirstWord(RestAfterFirstWord(commandLine));
    UpgradeCleanup();
    return RunService();
}

/// The service never shows a dialog, not even before it knows that it is one, unless somebody debugs it; nor
/// do those who replace it, for whom nobody might be there to click.
void ChooseDialogs(RunMode mode) {
    static WindowDialogs dialogs;
    const bool isService = mode == RunMode::Service || mode == RunMode::ServiceAfterUpdate;
    const bool isUpdate = mode == RunMode::Update || mode == RunMode::UpdateGuard;
    if (!isUpdate && (!isService || State().DebugMode) && platform::HasDisplay()) InstallDialogs(&dialogs);
}

int EnterMode(const Text& commandLine) {
    const RunMode mode = ChooseRunMode(commandLine);
    ChooseDialogs(mode);
    switch (mode) {
        case RunMode::Service:
            return RunService();
        case RunMode::ServiceAfterUpdate:
            return RunServiceAfterUpdate(commandLine);
        case RunMode::Interactive:
            State().LogTag = "UI";
            return Main_Normal(commandLine);
        case RunMode::Deploy:
        case RunMode::InstallSilently:
        case RunMode::RemoveSilently:
        case RunMode::Install:
        case RunMode::Remove:
        case RunMode::StartService:
        case RunMode::StopService:
            RunServiceControlMode(mode);
            return kExitNormal;
        case RunMode::Update:
            RunUpdateMode(commandLine);
            return kExitNormal;
        case RunMode::UpdateGuard:
            RunUpdateGuard(commandLine);
            return kExitNormal;
    }
    return kExitNormal;
}

}  // namespace

int Main() try {
    SeedRandom(platform::SystemRandom());
    State().LogTag.clear();
    Text commandLine = platform::CommandLine();
    LogStart(commandLine);
    if (StripDebugSuffix(commandLine)) State().DebugMode = true;
    ApplyPendingUpdate(commandLine);
    LoadTools();
    return EnterMode(commandLine);
} catch (...) {
    HandleError("Globals.Main");
    return kExitFatal;
}

}  // namespace rvl
