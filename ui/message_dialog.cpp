#include "ui/message_dialog.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <vector>

#include "runtime/dialogs.h"
#include "ui/accessibility.h"
#include "ui/on_top.h"
#include "ui/pictures.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr int kMostLines = 20;
constexpr std::size_t kLongestLine = 110;
constexpr int kTextWidth = 70;  // characters

struct ButtonLabel {
    int button;
    const char* label;
};

std::vector<ButtonLabel> ButtonsOf(int style) {
    constexpr int kMask = 0x0F;
    switch (style & kMask) {
        case kButtonsOkCancel:
            return {{kOk, "OK"}, {kCancel, "Cancel"}};
        case kButtonsAbortRetryIgnore:
            return {{kAbort, "&Abort"}, {kRetry, "&Retry"}, {kIgnore, "&Ignore"}};
        case kButtonsYesNoCancel:
            return {{kYes, "&Yes"}, {kNo, "&No"}, {kCancel, "Cancel"}};
        case kButtonsYesNo:
            return {{kYes, "&Yes"}, {kNo, "&No"}};
        case kButtonsRetryCancel:
            return {{kRetry, "&Retry"}, {kCancel, "Cancel"}};
        default:
            return {{kOk, "OK"}};
    }
}

constexpr int kIconMask = 0x70;

wxArtID PictureOf(int style) {
    switch (style & kIconMask) {
        case kIconCritical:
            return wxART_ERROR;
        case kIconQuestion:
            return wxART_QUESTION;
        case kIconExclamation:
            return wxART_WARNING;
        default:
            return wxART_INFORMATION;
    }
}

/// True for a message that a label would show beyond the edges of the screen.
bool IsLong(const Text& prompt) {
    if (std::count(prompt.begin(), prompt.end(), '\n') >= kMostLines) return true;
    for (std::size_t start = 0; start < prompt.size();) {
        const std::size_t end = std::min(prompt.find('\n', start), prompt.size());
        if (end - start > kLongestLine) return true;
        start = end + 1;
    }
    return false;
}

/// The toolkit's own boxes scroll no long message, always have an icon on some systems, and where they are
/// the system's, the end of the program does not close them.
class MessageDialog : public wxDialog {
 public:
    MessageDialog(const Text& prompt, int style, const Text& title)
        : wxDialog(nullptr, wxID_ANY, ToWx(title), wxDefaultPosition, wxDefaultSize,
                   wxDEFAULT_DIALOG_STYLE | wxDIALOG_NO_PARENT | (IsLong(prompt) ? wxRESIZE_BORDER : 0)) {
        MakeIndependent(*this);
        SetIcons(ApplicationIcons());
        auto* all = new wxBoxSizer(wxVERTICAL);  // wx owns sizers and controls
        all->Add(MakeMessage(prompt, style), wxSizerFlags(1).Expand().Border(wxALL, FromDIP(10)));
        all->Add(MakeButtons(style), wxSizerFlags().Right().Border(wxALL & ~wxTOP, FromDIP(10)));
        SetSizerAndFit(all);
        CentreOnScreen();
    }

 private:
    wxSizer* MakeMessage(const Text& prompt, int style) {
        auto* message = new wxBoxSizer(wxHORIZONTAL);
        if ((style & kIconMask) != 0) {
            const wxBitmap picture = wxArtProvider::GetBitmap(PictureOf(style), wxART_MESSAGE_BOX);
            message->Add(new wxStaticBitmap(this, wxID_ANY, picture),
                         wxSizerFlags().Border(wxRIGHT, FromDIP(10)));
        }
        message->Add(IsLong(prompt) ? MakeScrolledText(prompt) : MakeLabel(prompt), wxSizerFlags(1).Expand());
        return message;
    }

    wxWindow* MakeScrolledText(const Text& prompt) {
        auto* text = new wxTextCtrl(this, wxID_ANY, ToWxLines(prompt), wxDefaultPosition, wxDefaultSize,
                                    wxTE_MULTILINE | wxTE_READONLY);
        wxSize size(GetCharWidth() * kTextWidth, GetCharHeight() * kMostLines);
        size.DecTo(wxDisplay(this).GetClientArea().GetSize() * 2 / 3);
        text->SetMinSize(size);
        NameForScreenReaders(*text, "Message");
        return text;
    }

    wxWindow* MakeLabel(const Text& prompt) { return new wxStaticText(this, wxID_ANY, ToWxLabel(prompt)); }

    wxSizer* MakeButtons(int style) {
        auto* buttons = new wxBoxSizer(wxHORIZONTAL);
        const std::vector<ButtonLabel> labels = ButtonsOf(style);
        for (const auto& [result, label] : labels) {
            auto* button = new wxButton(this, IdOf(result), label);
            button->Bind(wxEVT_BUTTON, [this, end = result](wxCommandEvent&) { EndModal(end); });
            if (result == DefaultButton(style)) button->SetDefault();
            if (result == DefaultButton(style)) button->SetFocus();
            buttons->Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(8)));
        }
        // As in the standard box: Esc is Cancel, or OK where that is all there is, and nothing else.
        const bool hasCancel = labels.back().button == kCancel || labels.size() == 1;
        SetEscapeId(hasCancel ? IdOf(labels.back().button) : wxID_NONE);
        return buttons;
    }

    static int IdOf(int result) { return wxID_HIGHEST + result; }
};

}  // namespace

int ShowMessageDialog(const Text& prompt, int style, const Text& title) {
    const int answer = MessageDialog(prompt, style, title).ShowModal();
    return answer == wxID_NONE ? DismissingButton(style) : answer;
}

}  // namespace rvl
