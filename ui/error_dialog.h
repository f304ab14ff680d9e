#pragma once

#include "runtime/dialogs.h"

namespace rvl {

/// frmError: shows one error modally. "Close" goes on with the program, "E&xit" may end it.
void ShowErrorDialogWindow(const ErrorDialogTexts& texts);

}  // namespace rvl
