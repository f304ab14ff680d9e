#pragma once

#include "platform/text.h"

namespace rvl {

/// What one process does, chosen by its command line.
enum class RunMode {
    Service,
    Deploy,
    InstallSilently,
    RemoveSilently,
    Install,
    Remove,
    StartService,
    StopService,
    Update,
    UpdateGuard,  ///< started by an update process for its own safety, never by a person
    ServiceAfterUpdate,
    Interactive,
};

/// The mode of a command line from which the debug suffix is gone. Switches are matched exactly and with
/// regard to case; an unknown one is an interactive start.
RunMode ChooseRunMode(const Text& commandLine);

enum class InteractiveMode { Helper, Switchboard, StartFrontend };

InteractiveMode ChooseInteractiveMode(const Text& commandLine);

/// Removes a trailing "-debug", in any case, and nothing else; true when it was there.
bool StripDebugSuffix(Text& commandLine);

}  // namespace rvl
