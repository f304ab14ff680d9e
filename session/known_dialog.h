#pragma once

#include "session/desktop.h"

namespace rvl {

/// Asks the window to close if it is the dialog in which Access says that a design cannot be changed while
/// others use the database, which is of no use to the users of a front end.
void DoCantMakeChangesCheck(Desktop& desktop, WindowHandle window);

/// The same for the foreground window and for the topmost dialog of Access.
void CloseKnownDialogs(Desktop& desktop, const std::vector<WindowHandle>& topLevelWindows);

}  // namespace rvl
