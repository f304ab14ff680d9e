#include "ui/administrator_message_window.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/hyperlink.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include "ui/accessibility.h"
#include "ui/forms.h"
#include "ui/html_view.h"
#include "ui/minimum_size.h"
#include "ui/on_top.h"
#include "ui/wx_text.h"

namespace rvl {

AdministratorMessageWindow::AdministratorMessageWindow(const AdministratorMessageFactory& factory)
    : wxFrame(nullptr, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, kOnTopStyle,
              "frmClientTerminateFrontend"),
      m_page(new wxPanel(this)),
      m_message(new HTMLView(m_page, "txtMessage")),
      m_closeNow(MakeButton("cmdCloseNow", "Close &Database Now", [this] { m_operations.closeNow(); })),
      m_continue(MakeButton("cmdContinue", "Continue &Working", [this] { m_operations.continueWorking(); })),
      m_operations(factory(*this)) {
    Furnish(*this);
    MakeIndependent(*this);
    NameForScreenReaders(*m_message, "Message");
    Arrange();
    Bind(wxEVT_CLOSE_WINDOW, &AdministratorMessageWindow::OnClose, this);
}

wxButton* AdministratorMessageWindow::MakeButton(const char* name, const char* label,
                                                 std::function<void()> clicked) {
    auto* button =
        new wxButton(m_page, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, 0, wxDefaultValidator, name);
    button->Bind(wxEVT_BUTTON, [clicked = std::move(clicked)](wxCommandEvent&) { clicked(); });
    return button;
}

void AdministratorMessageWindow::Arrange() {
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(m_closeNow, wxSizerFlags().Border(wxRIGHT, FromDIP(8)));
    buttons->Add(m_continue);
    m_links = new wxBoxSizer(wxVERTICAL);
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(m_message, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(10)));
    all->Add(m_links, wxSizerFlags().Border(wxALL & ~wxTOP, FromDIP(10)));
    all->Add(buttons, wxSizerFlags().Right().Border(wxALL & ~wxTOP, FromDIP(10)));
    m_page->SetSizer(all);
    auto* whole = new wxBoxSizer(wxVERTICAL);
    whole->Add(m_page, wxSizerFlags(1).Expand());
    SetSizer(whole);
    SetClientSize(GetCharWidth() * 64, GetCharHeight() * 18);
    wxSize size = GetSize();
    size.DecTo(wxDisplay(this).GetClientArea().GetSize());
    SetSize(size);
    EnforceMinimumSize(*this, wxSize(300, 200));
}

void AdministratorMessageWindow::SetCaption(const Text& caption) {
    SetTitle(ToWx(caption));
}

void AdministratorMessageWindow::SetMessage(const Text& html) {
    m_message->SetMessage(html);
    for (const wxString& address : m_message->Links())
        AddLink(address);
    Layout();
    m_page->Layout();
}

/// The message itself can only be clicked: what it links to is within reach of the keyboard below it.
void AdministratorMessageWindow::AddLink(const wxString& address) {
    auto* link = new wxHyperlinkCtrl(m_page, wxID_ANY, address, address);
    link->Bind(wxEVT_HYPERLINK, [](wxHyperlinkEvent& event) { HTMLView::OpenLink(event.GetURL()); });
    m_links->Add(link);
}

void AdministratorMessageWindow::DisableContinueButton() {
    m_continue->Disable();
}

void AdministratorMessageWindow::DisableCloseNowButton() {
    m_closeNow->Disable();
}

void AdministratorMessageWindow::DisableCloseButton() {
    m_closeDisabled = true;
    EnableCloseButton(false);
}

void AdministratorMessageWindow::ShowOnTopWithoutFocus() {
    rvl::ShowOnTopWithoutFocus(*this);
}

void AdministratorMessageWindow::Unload() {
    DestroyLater(*this);
}

/// Closing it from the title bar is going on working.
void AdministratorMessageWindow::OnClose(wxCloseEvent& event) {
    if (event.CanVeto()) event.Veto();  // what is behind it decides
    if (!m_closeDisabled) m_operations.continueWorking();
}

}  // namespace rvl
