#pragma once

#include "platform/text.h"

namespace rvl {

/// Shows a message box and returns the button pressed (runtime/dialogs.h).
int ShowMessageDialog(const Text& prompt, int style, const Text& title);

}  // namespace rvl
