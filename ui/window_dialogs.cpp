#include "ui/window_dialogs.h"

#include "ui/error_dialog.h"
#include "ui/message_dialog.h"
#include "ui/toolkit.h"

namespace rvl {

/// A plain box and a centred one look alike here: without an owner window both are centred on the screen.
int WindowDialogs::ShowMessageBox(const Text& prompt, int style, const Text& title, bool plain) {
    if (!StartToolkit()) return StandardErrorDialogs().ShowMessageBox(prompt, style, title, plain);
    return ShowMessageDialog(prompt, style, title);
}

void WindowDialogs::ShowErrorDialog(const ErrorDialogTexts& texts) {
    StartToolkit() ? ShowErrorDialogWindow(texts) : StandardErrorDialogs().ShowErrorDialog(texts);
}

bool WindowDialogs::IsInteractive() const {
    return StartToolkit();
}

}  // namespace rvl
