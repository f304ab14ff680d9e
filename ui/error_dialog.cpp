#include "ui/error_dialog.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/hyperlink.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <algorithm>

#include "runtime/error_reporter.h"
#include "ui/accessibility.h"
#include "ui/pictures.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr int kFieldWidth = 56;  // characters
constexpr int kMostLines = 12;

class ErrorDialogWindow : public wxDialog {
 public:
    explicit ErrorDialogWindow(const ErrorDialogTexts& texts)
        : wxDialog(nullptr, wxID_ANY, "An unexpected error has occured in Ravelin", wxDefaultPosition,
                   wxDefaultSize, wxDEFAULT_DIALOG_STYLE, "frmError") {
        auto* all = new wxBoxSizer(wxVERTICAL);  // wx owns sizers and controls
        const auto margins = wxSizerFlags().Border(wxALL, FromDIP(10));
        all->Add(MakeHead(), margins);
        all->Add(MakeFields(texts), wxSizerFlags(margins).Expand());
        all->Add(MakeButtons(), wxSizerFlags(margins).Right());
        SetIcons(ApplicationIcons());
        SetSizerAndFit(all);
        CentreOnScreen();
        SetEscapeId(wxID_CLOSE);
        Bind(wxEVT_ACTIVATE, &ErrorDialogWindow::OnActivate, this);
    }

 private:
    wxSizer* MakeHead() {
        auto* head = new wxBoxSizer(wxHORIZONTAL);
        const wxBitmap picture = wxArtProvider::GetBitmap(wxART_ERROR, wxART_MESSAGE_BOX);
        head->Add(new wxStaticBitmap(this, wxID_ANY, picture), wxSizerFlags().Border(wxRIGHT, FromDIP(10)));
        head->Add(new wxStaticText(this, wxID_ANY,
                                   "Sorry for the inconvenience, please report below for quick help!"),
                  wxSizerFlags().Centre());
        return head;
    }

    int FieldWidth() const {
        return std::min(GetCharWidth() * kFieldWidth, wxGetDisplaySize().GetWidth() / 2);
    }

    wxSizer* MakeFields(const ErrorDialogTexts& texts) {
        auto* fields = new wxFlexGridSizer(2, FromDIP(wxSize(8, 6)));
        fields->AddGrowableCol(1);
        AddField(fields, "Version:", texts.version);
        AddField(fields, "Error code:", texts.errorCode);
        AddField(fields, "Source:", texts.source);
        AddField(fields, "Message:", texts.message);
        AddField(fields, "Function:", texts.function);
        AddLabel(fields, "Support:");
        auto* support = new wxHyperlinkCtrl(this, wxID_ANY, "Support web page", "support");
        support->Bind(wxEVT_HYPERLINK, [](wxHyperlinkEvent&) { OpenSupportPage(); });
        fields->Add(support);
        return fields;
    }

    void AddLabel(wxSizer* fields, const char* label) {
        fields->Add(new wxStaticText(this, wxID_ANY, label));
    }

    /// A field is as high as its text needs, so that a long message pushes what is below it down.
    void AddField(wxSizer* fields, const char* label, const Text& text) {
        AddLabel(fields, label);
        const wxString shown = ToWx(text);
        const int lines = std::clamp(LinesOf(shown), 1, kMostLines);
        auto* field = new wxTextCtrl(this, wxID_ANY, shown, wxDefaultPosition, wxDefaultSize,
                                     wxTE_READONLY | (lines > 1 ? wxTE_MULTILINE | wxTE_WORDWRAP : 0));
        const wxSize oneLine = field->GetBestSize();
        field->SetMinSize(
            wxSize(FieldWidth(), lines > 1 ? lines * GetCharHeight() + FromDIP(16) : oneLine.GetHeight()));
        NameForScreenReaders(*field, label);
        fields->Add(field, wxSizerFlags().Expand());
    }

    int LinesOf(const wxString& text) const {
        int lines = 0;
        for (std::size_t start = 0; start <= text.length();) {
            const std::size_t end = std::min(text.find('\n', start), text.length());
            lines +=
                1 + GetTextExtent(text.substr(start, end - start)).GetWidth() / (FieldWidth() - FromDIP(20));
            start = end + 1;
        }
        return lines;
    }

    wxSizer* MakeButtons() {
        auto* buttons = new wxBoxSizer(wxHORIZONTAL);
        auto* exit = new wxButton(this, wxID_EXIT, "E&xit");
        exit->Bind(wxEVT_BUTTON, [](wxCommandEvent&) { ExitFromErrorDialog(); });
        auto* close = new wxButton(this, wxID_CLOSE, "Close");
        close->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(wxID_CLOSE); });
        close->SetDefault();
        buttons->Add(exit, wxSizerFlags().Border(wxRIGHT, FromDIP(8)));
        buttons->Add(close);
        return buttons;
    }

    void OnActivate(wxActivateEvent& event) {
        while (wxIsBusy())
            wxEndBusyCursor();  // whatever was being waited for is over
        event.Skip();
    }
};

}  // namespace

void ShowErrorDialogWindow(const ErrorDialogTexts& texts) {
    ErrorDialogWindow(texts).ShowModal();
}

}  // namespace rvl
