#include "ui/switchboard_window.h"

#include <wx/dcclient.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/utils.h>

#include "session/tab_keys.h"
#include "ui/advanced_page.h"
#include "ui/forms.h"
#include "ui/minimum_size.h"
#include "ui/switchboard_page.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr const char* kAdvanced = "Advanced";
constexpr const char* kAdvancedDisabled = "Advanced (no server)";
constexpr const char* kPlaceSection = "Client\\WindowPos";
constexpr const char* kSplitterValue = "Advanced Splitter";

int IndexOf(SwitchboardView::Tab tab) {
    return tab == SwitchboardView::Tab::Switchboard ? 0 : 1;
}

}  // namespace

SwitchboardWindow::SwitchboardWindow()
    : MainWindow("frmClientMain", "Access Switchboard"),
      m_tabs(new wxNotebook(this, wxID_ANY)),
      m_place(*this) {
    MakePages();
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(m_tabs, wxSizerFlags(1).Expand());
    SetSizer(all);
    SetSize(FromDIP(wxSize(640, 420)));
    EnforceMinimumSize(*this, wxSize(360, 240));
    m_tabs->Hide();
    ForwardEvents();
}

void SwitchboardWindow::MakePages() {
    m_switchboard = new SwitchboardPage(m_tabs);
    m_advanced = new AdvancedPage(m_tabs);
    m_tabs->AddPage(m_switchboard, "Switchboard");
    m_tabs->AddPage(m_advanced, kAdvancedDisabled);
    m_advanced->Disable();
}

void SwitchboardWindow::ForwardEvents() {
    m_switchboard->List().OnActivated([this](std::int32_t frontendId, const Text& name) {
        if (m_events.start) m_events.start(frontendId, name);
    });
    m_advanced->List().OnSelected([this](std::int32_t frontendId, const Text&) {
        if (m_events.chosen) m_events.chosen(frontendId);
    });
    m_tabs->Bind(wxEVT_NOTEBOOK_PAGE_CHANGING, &SwitchboardWindow::OnTabChanging, this);
    m_tabs->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, &SwitchboardWindow::OnTabChanged, this);
    Bind(wxEVT_PAINT, &SwitchboardWindow::OnPaint, this);
    Bind(wxEVT_CHAR_HOOK, &SwitchboardWindow::OnKey, this);
}

void SwitchboardWindow::Show() {
    LoadWindowPos(m_place, kPlaceSection);
    LoadSplitterPos(m_advanced->Bar(), kPlaceSection, kSplitterValue);
    m_tabs->ChangeSelection(IndexOf(Tab::Switchboard));
    MainWindow::Show(true);
}

/// The tabs appear in a window that has its size: until then it may be smaller than they bear.
void SwitchboardWindow::OnPaint(wxPaintEvent&) {
    const wxPaintDC painted(this);
    if (m_tabs->IsShown()) return;
    m_tabs->Show();
    Layout();
    CallAfter([this] {
        m_switchboard->List().FitColumns();
        FocusList();
    });
}

void SwitchboardWindow::KeepPlace() const {
    SaveWindowPos(m_place, kPlaceSection);
    SaveSplitterPos(m_advanced->Bar(), kPlaceSection, kSplitterValue);
}

void SwitchboardWindow::SetCaption(const Text& caption) {
    SetTitle(ToWx(caption));
}

SwitchboardView::Tab SwitchboardWindow::ShownTab() const {
    return m_tabs->GetSelection() == IndexOf(Tab::Advanced) ? Tab::Advanced : Tab::Switchboard;
}

void SwitchboardWindow::SetBusyPointer(bool busy) {
    if (busy == m_busy) return;
    m_busy = busy;
    if (busy)
        wxBeginBusyCursor();
    else if (wxIsBusy())  // an error dialog may have ended it
        wxEndBusyCursor();
}

void SwitchboardWindow::ClearFrontends() {
    m_switchboard->List().Clear();
    m_advanced->List().Clear();
}

void SwitchboardWindow::AddFrontend(const FrontendItem& item) {
    m_switchboard->List().Add(item);
    m_advanced->List().Add(item);
}

void SwitchboardWindow::RemoveFrontend(std::int32_t frontendId) {
    m_switchboard->List().Remove(frontendId);
    m_advanced->List().Remove(frontendId);
}

/// A tab has no disabled look of its own: its label says why it cannot be chosen.
void SwitchboardWindow::EnableAdvanced(bool enabled) {
    if (enabled == m_advancedEnabled) return;
    m_advancedEnabled = enabled;
    m_tabs->SetPageText(static_cast<std::size_t>(IndexOf(Tab::Advanced)),
                        enabled ? kAdvanced : kAdvancedDisabled);
    m_tabs->Refresh();  // also where the longer label was
    m_advanced->Enable(enabled);
    if (ShownTab() == Tab::Advanced) FocusList();
}

void SwitchboardWindow::ShowHistory(const std::vector<VersionHistoryRow>& rows) {
    m_advanced->History().ShowRows(rows);
}

std::vector<Text> SwitchboardWindow::LoadedForms() const {
    return rvl::LoadedForms();
}

void SwitchboardWindow::UnloadForm(const Text& name) {
    rvl::UnloadForm(name);
}

void SwitchboardWindow::OnKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode(), modifiers = event.GetModifiers();
    if (key == WXK_ESCAPE && modifiers == wxMOD_NONE) return UnloadFor(UnloadMode::Closing);
    if (key == WXK_TAB && (modifiers & ~wxMOD_SHIFT) == wxMOD_CONTROL) {
        const int count = static_cast<int>(m_tabs->GetPageCount());
        const int next = NextTab(m_tabs->GetSelection(), count, event.ShiftDown());
        m_tabs->SetSelection(static_cast<std::size_t>(next));
        return;
    }
    event.Skip();
}

void SwitchboardWindow::OnTabChanging(wxBookCtrlEvent& event) {
    if (event.GetSelection() == IndexOf(Tab::Advanced) && !m_advancedEnabled) event.Veto();
}

void SwitchboardWindow::OnTabChanged(wxBookCtrlEvent& event) {
    event.Skip();
    Layout();
    m_advanced->List().FitColumns();
    CallAfter([this] { FocusList(); });  // the tab that was clicked takes the focus first
    if (m_events.tabChanged) m_events.tabChanged();
}

void SwitchboardWindow::FocusList() {
    const bool advanced = ShownTab() == Tab::Advanced;
    FrontendList& list = advanced ? static_cast<FrontendList&>(m_advanced->List()) : m_switchboard->List();
    m_tabs->SetFocus();  // a list that takes itself for focused would not pass the focus on to its content
    if (list.IsEnabled()) list.SetFocus();
}

}  // namespace rvl
