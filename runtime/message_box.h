#pragma once

#include "runtime/dialogs.h"
#include "runtime/process_state.h"

namespace rvl {

/// Shows a message box and returns the button pressed (kOk ... kNo). A box opened while another is open is a
/// plain one. Outside service mode the prompt and the answer are logged.
int MsgBox(const Text& prompt, int style, const Text& title = State().ApplicationTitle);

/// "OK", "Cancel", ... of a button; "Unknown" of any other number.
Text ButtonName(int button);

}  // namespace rvl
