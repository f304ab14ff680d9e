#pragma once

#include <windows.h>

#include "platform/text.h"

namespace rvl::msaccess {

/// Shows the dialog, which closes by itself.
HWND ShowCantMakeChangesDialog(HWND owner, const Text& message);

}  // namespace rvl::msaccess
