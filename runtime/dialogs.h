#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

// Styles of a message box: one set of buttons, one icon and a default button, added up.
inline constexpr int kButtonsOk = 0;
inline constexpr int kButtonsOkCancel = 1;
inline constexpr int kButtonsAbortRetryIgnore = 2;
inline constexpr int kButtonsYesNoCancel = 3;
inline constexpr int kButtonsYesNo = 4;
inline constexpr int kButtonsRetryCancel = 5;
inline constexpr int kIconCritical = 16;
inline constexpr int kIconQuestion = 32;
inline constexpr int kIconExclamation = 48;
inline constexpr int kIconInformation = 64;
inline constexpr int kDefaultSecond = 256;
inline constexpr int kDefaultThird = 512;

// The button pressed.
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kAbort = 3;
inline constexpr int kRetry = 4;
inline constexpr int kIgnore = 5;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;

/// The read-only fields of the error dialog.
struct ErrorDialogTexts {
    Text version;
    Text errorCode;
    Text source;
    Text message;
    Text function;
};

/// What the runtime needs of the windows: app/ installs the one of ui/ where there is a display.
class Dialogs {
 public:
    virtual ~Dialogs() = default;

    /// Shows a modal box and returns the button pressed. A plain box is the system's own; any other is
    /// centred over its owner.
    virtual int ShowMessageBox(const Text& prompt, int style, const Text& title, bool plain) = 0;
    virtual void ShowErrorDialog(const ErrorDialogTexts& texts) = 0;

    /// False when nobody can answer: the default button is taken then.
    virtual bool IsInteractive() const = 0;
};

/// The dialogs of a process without windows: the text goes to standard error, the default button is taken.
Dialogs& StandardErrorDialogs();

/// The installed dialogs; before that, those that write to standard error.
Dialogs& CurrentDialogs();

/// Not owned; null brings back standard error.
void InstallDialogs(Dialogs* dialogs);

/// The button that a style makes the default.
int DefaultButton(int style);

/// The button that does least, for a box that goes unanswered because the process ends.
int DismissingButton(int style);

}  // namespace rvl
