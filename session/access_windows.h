#pragma once

#include "session/desktop.h"

namespace rvl {

/// The Access main windows among the top-level windows, in their order.
std::vector<WindowHandle> AccessMainWindows(const Desktop& desktop,
                                            const std::vector<WindowHandle>& topLevelWindows);

/// A running Access with its main window.
struct OpenAccess {
    WindowHandle window = 0;
    RunningAccess object;
};

/// The topmost Access that has this database open; none when there is none.
std::optional<OpenAccess> FindOpenAccessObjectByDBFilename(const Desktop& desktop, TextView databasePath);

/// A handle as messages and log write it: signed, in decimal.
Text HandleText(WindowHandle window);

}  // namespace rvl
