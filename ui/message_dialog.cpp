#include "ui/message_dialog.h"

#include <wx/richmsgdlg.h>

#include "runtime/dialogs.h"
#include "ui/on_top.h"
#include "ui/own_message_dialog.h"
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
            return 0;
    }
}

long ButtonStyle(int style) {
    const bool second = (style & kDefaultSecond) != 0;
    const bool third = (style & kDefaultThird) != 0;
    switch (style & kButtonMask) {
        case kButtonsOkCancel:
        case kButtonsRetryCancel:
            return wxOK | wxCANCEL | (second ? wxCANCEL_DEFAULT : 0);
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
}

int ButtonOf(int answer, int style) {
    switch (answer) {
        case wxID_YES:
            return kYes;
        case wxID_NO:
            return kNo;
        case wxID_CANCEL:
            return kCancel;
        case wxID_NONE:
            return DismissingButton(style);
        default:
            return (style & kButtonMask) == kButtonsRetryCancel ? kRetry : kOk;
    }
}

/// The toolkit's box always has an icon, does not break lines, and takes Esc for one of three buttons of
/// which none means that.
bool NeedsOwnDialog(const Text& prompt, int style) {
    return IsLongMessage(prompt) || (style & kIconMask) == 0 ||
           (style & kButtonMask) == kButtonsAbortRetryIgnore;
}

}  // namespace

int ShowMessageDialog(const Text& prompt, int style, const Text& title) {
    if (NeedsOwnDialog(prompt, style)) return ShowOwnMessageDialog(prompt, style, title);
    // The rich dialog is native where the system has one and shows the icon on every other.
    wxRichMessageDialog dialog(nullptr, ToWxLines(prompt), ToWx(title),
                               ButtonStyle(style) | IconStyle(style) | wxCENTRE | wxDIALOG_NO_PARENT);
    MakeIndependent(dialog);
    Relabel(dialog, style);
    return ButtonOf(dialog.ShowModal(), style);
}

}  // namespace rvl
