#pragma once

#include <wx/frame.h>

#include <vector>

#include "platform/text.h"
#include "runtime/unload_mode.h"

namespace rvl {

// The forms of this process: its windows that have a name such as "frmClientMain".

/// Gives a form the program's icons, and the background that dialogs have on every system.
void Furnish(wxFrame& form);

/// Those that are open, in the order in which they were opened.
std::vector<Text> LoadedForms();

/// Those whose end is the end of the process.
void UnloadMainWindows(UnloadMode mode);

/// Closes the first of this name, whatever it has to say; none is no error.
void UnloadForm(const Text& name);

}  // namespace rvl
