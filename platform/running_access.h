#pragma once

#include <optional>

#include "platform/desktop_windows.h"
#include "platform/text.h"

namespace rvl::platform {

/// What a running Microsoft Access tells of itself.
struct RunningAccess {
    Text version;                        ///< "11.0"
    Text build;                          ///< "8166"; empty when it does not tell
    std::optional<Text> currentProject;  ///< full path of the open database; none when none is open
};

/// The Access that owns a main window, as registered among the running objects; none when it is not. Nothing
/// is started.
std::optional<RunningAccess> FindRunningAccess(WindowHandle accessWindow);

}  // namespace rvl::platform
