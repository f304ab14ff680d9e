#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl {

/// The message box of the command MSGBOX, modal: text, title (the application's when empty), style. What is
/// missing counts as empty.
void ShowServiceMessageBox(std::vector<Text> params);

}  // namespace rvl
