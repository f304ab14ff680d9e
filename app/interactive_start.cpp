#include "app/interactive_start.h"

#include "app/run_mode.h"
#include "app/update_mode.h"
#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "runtime/process_state.h"
#include "ui/window_programs.h"
#include "util/command_words.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

int StartHelper() {
    State().LogTag = "Helper";
    Log("Client Helper starting");
    return RunHelper(StartClientUpgradeWaitMode);
}

int StartSwitchboard(const Text& commandLine) {
    Log("Client UI starting");
    if (!commandLine.empty()) Log("Warning: Unrecognized command line parameter: " + commandLine);
    return RunSwitchboard(StartClientUpgradeWaitMode);
}

int StartOneFrontend(const Text& commandLine) {
    const Text words = RestAfterFirstWord(commandLine);
    const std::int32_t frontendId = ParseLongOr(FirstWord(words), 0);
    const Text name = FirstWord(RestAfterFirstWord(words));
    if (name.empty() || frontendId < 1) MsgBox("Invalid command line parameters", kIconCritical);
    Log("Client UI starting in launch frontend mode");
    return RunStartFrontend(frontendId, name);
}

}  // namespace

int Main_Normal(const Text& commandLine) try {
    switch (ChooseInteractiveMode(commandLine)) {
        case InteractiveMode::Helper:
            return StartHelper();
        case InteractiveMode::Switchboard:
            return StartSwitchboard(commandLine);
        case InteractiveMode::StartFrontend:
            break;
    }
    return StartOneFrontend(commandLine);
} catch (...) {
    HandleErrorAndReRaise("GlobalsClient.Main_Normal");
}

}  // namespace rvl
