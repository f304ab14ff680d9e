#pragma once

#include "runtime/dialogs.h"

namespace rvl {

/// The dialogs as windows. The toolkit starts with the first dialog: a process that shows none never pays for
/// it. Where it cannot start, standard error takes over.
class WindowDialogs : public Dialogs {
 public:
    int ShowMessageBox(const Text& prompt, int style, const Text& title, bool plain) override;
    void ShowErrorDialog(const ErrorDialogTexts& texts) override;
    bool IsInteractive() const override;
};

}  // namespace rvl
