#include "ui/new_version_window.h"

#include <wx/button.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/forms.h"
#include "ui/on_top.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr int kTextWidth = 56;  // characters

}  // namespace

NewVersionWindow::NewVersionWindow(std::int32_t frontendId, const Text& caption, const Text& message)
    : wxFrame(nullptr, wxID_ANY, ToWx(caption), wxDefaultPosition, wxDefaultSize,
              kOnTopStyle & ~wxRESIZE_BORDER, "frmClientNewVersion"),
      m_frontendId(frontendId) {
    Furnish(*this);
    MakeIndependent(*this);
    Arrange(message);
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        event.GetKeyCode() == WXK_ESCAPE ? static_cast<void>(Close()) : event.Skip();
    });
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Discard(); });
}

void NewVersionWindow::Arrange(const Text& message) {
    auto* page = new wxPanel(this);  // takes care of the keys
    auto* label = new wxStaticText(page, wxID_ANY, ToWxLabel(message), wxDefaultPosition, wxDefaultSize, 0,
                                   "lblMessage");
    label->Wrap(GetCharWidth() * kTextWidth);
    auto* close = new wxButton(page, wxID_OK, "OK", wxDefaultPosition, wxDefaultSize, 0, wxDefaultValidator,
                               "cmdClose");
    close->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); });
    close->SetDefault();
    close->SetFocus();
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(label, wxSizerFlags().Expand().Border(wxALL, FromDIP(12)));
    all->Add(close, wxSizerFlags().Centre().Border(wxALL & ~wxTOP, FromDIP(12)));
    page->SetSizer(all);
    auto* whole = new wxBoxSizer(wxVERTICAL);
    whole->Add(page, wxSizerFlags(1).Expand());
    SetSizer(whole);
    whole->SetSizeHints(this);
}

void NewVersionWindow::Discard() {
    DestroyLater(*this);
}

void NewVersionWindow::ShowDialog() {
    ShowOnTopWithoutFocus(*this);
}

}  // namespace rvl
