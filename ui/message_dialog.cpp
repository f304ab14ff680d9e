#include "ui/message_dialog.h"

#include <wx/richmsgdlg.h>

#include "runtime/dialogs.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr int kButtonMask = 0x0F;
constexpr int kIconMask = 0x70;

long IconStyle(int style) {
    switch (style & kIconMask) {
        case kIconCritical:
            return wxICON_ERROR;
        case kIconQuestion:
            return wxICON_QUESTION;
        case kIconExclamation:
            return wxICON_EXCLAMATION;
        case kIconInformation:
            return wxICON_INFORMATION;
        default:
            return wxICON_NONE;
    }
}

/// The toolkit knows OK, Cancel, Yes, No: the other sets are shown by relabelling those.
long ButtonStyle(int style) {
    const bool second = (style & kDefaultSecond) != 0;
    const bool third = (style & kDefaultThird) != 0;
    switch (style & kButtonMask) {
        case kButtonsOkCancel:
        case kButtonsRetryCancel:
            return wxOK | wxCANCEL | (second ? wxCANCEL_DEFAULT : 0);
        case kButtonsAbortRetryIgnore:
        case kButtonsYesNoCancel:
            return wxYES_NO | wxCANCEL | (second ? wxNO_DEFAULT : 0) | (third ? wxCANCEL_DEFAULT : 0);
        case kButtonsYesNo:
            return wxYES_NO | (second ? wxNO_DEFAULT : 0);
        default:
            return wxOK;
    }
}

void Relabel(wxRichMessageDialog& dialog, int style) {
    if ((style & kButtonMask) == kButtonsRetryCancel) dialog.SetOKCancelLabels("&Retry", "Cancel");
    if ((style & kButtonMask) == kButtonsAbortRetryIgnore)
        dialog.SetYesNoCancelLabels("&Abort", "&Retry", "&Ignore");
}

int ButtonOf(int answer, int style) {
    const int buttons = style & kButtonMask;
    const bool abortRetryIgnore = buttons == kButtonsAbortRetryIgnore;
    switch (answer) {
        case wxID_YES:
            return abortRetryIgnore ? kAbort : kYes;
        case wxID_NO:
            return abortRetryIgnore ? kRetry : kNo;
        case wxID_CANCEL:
            return abortRetryIgnore ? kIgnore : kCancel;
        default:
            return buttons == kButtonsRetryCancel ? kRetry : kOk;
    }
}

}  // namespace

int ShowMessageDialog(const Text& prompt, int style, const Text& title) {
    // The rich dialog is native where the system has one and shows the icon on every other.
    wxRichMessageDialog dialog(nullptr, ToWx(prompt), ToWx(title),
                               ButtonStyle(style) | IconStyle(style) | wxCENTRE);
    Relabel(dialog, style);
    return ButtonOf(dialog.ShowModal(), style);
}

}  // namespace rvl
