#include "app/run_mode.h"

#include "util/command_words.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

struct Switch {
    const char* text;
    RunMode mode;
    bool firstWordOnly;
};

// In the order in which they are tried.
constexpr Switch kSwitches[] = {
    {"-service_mode", RunMode::Service, false},
    {"-deploy", RunMode::Deploy, false},
    {"-install-silent", RunMode::InstallSilently, false},
    {"/install-silent", RunMode::InstallSilently, false},
    {"-uninstall-silent", RunMode::RemoveSilently, false},
    {"-remove-silent", RunMode::RemoveSilently, false},
    {"/uninstall-silent", RunMode::RemoveSilently, false},
    {"/remove-silent", RunMode::RemoveSilently, false},
    {"-install", RunMode::Install, false},
    {"/install", RunMode::Install, false},
    {"-uninstall", RunMode::Remove, false},
    {"-remove", RunMode::Remove, false},
    {"/uninstall", RunMode::Remove, false},
    {"/remove", RunMode::Remove, false},
    {"-start", RunMode::StartService, false},
    {"/start", RunMode::StartService, false},
    {"-stop", RunMode::StopService, false},
    {"/stop", RunMode::StopService, false},
    {"-update-mode", RunMode::Update, true},
    {"-update-mode-debug", RunMode::Update, true},
    {"-update-guard", RunMode::UpdateGuard, true},
    {"-update-guard-debug", RunMode::UpdateGuard, true},
    {"-service_mode-after-update", RunMode::ServiceAfterUpdate, true},
    {"-service_mode-after-update-debug", RunMode::ServiceAfterUpdate, true},
};

}  // namespace

RunMode ChooseRunMode(const Text& commandLine) {
    const Text firstWord = FirstWord(commandLine);
    for (const Switch& candidate : kSwitches)
        if ((candidate.firstWordOnly ? firstWord : commandLine) == candidate.text) return candidate.mode;
    return RunMode::Interactive;
}

InteractiveMode ChooseInteractiveMode(const Text& commandLine) {
    if (commandLine == "-service_helper-debug" || commandLine == "-service_helper")
        return InteractiveMode::Helper;
    return FirstWord(commandLine) == "-start_frontend" ? InteractiveMode::StartFrontend
                                                       : InteractiveMode::Switchboard;
}

bool StripDebugSuffix(Text& commandLine) {
    constexpr TextView kSuffix = "-debug";
    if (commandLine.size() < kSuffix.size()) return false;
    const std::size_t begin = commandLine.size() - kSuffix.size();
    if (LowerCase(TextView(commandLine).substr(begin)) != kSuffix) return false;
    commandLine.resize(begin);
    return true;
}

}  // namespace rvl
