#pragma once

#include <cstdint>
#include <memory>

#include "platform/dynamic_library.h"
#include "platform/text.h"

namespace rvl {

/// What every part of one process may need to know about it; one instance per process.
struct ProcessState {
    bool DebugMode = false;    ///< the service runs as a visible window, respawns keep the debug marker
    bool ServiceMode = false;  ///< this process is the client service
    Text ApplicationTitle = "Ravelin Client";  ///< of message boxes and captions; windows may change it
    Text LogTag;            ///< word in the log lines: empty at start, then "Service", "Helper" or "UI"
    Text UpdateTargetPath;  ///< executable being replaced; empty outside update mode
    Text UpgradeTempPath;   ///< temporary new executable to delete after an update
    bool SuppressErrorDialog = false;                 ///< errors are logged but not shown
    std::int32_t MsgBoxDepth = 0;                     ///< message boxes open now
    std::int32_t ErrorDepth = 0;                      ///< error reports in progress
    std::unique_ptr<platform::DynamicLibrary> Tools;  ///< empty when the tools library cannot be loaded
};

ProcessState& State();

/// Major, minor and revision of the executable: "1.1.3".
Text VersionString();

}  // namespace rvl
