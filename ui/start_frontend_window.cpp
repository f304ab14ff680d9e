#include "ui/start_frontend_window.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/accessibility.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr int kPulse = 80;      // milliseconds
constexpr int kTextWidth = 42;  // characters
constexpr long kStyle = wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX | wxMINIMIZE_BOX;

}  // namespace

StartFrontendWindow::StartFrontendWindow()
    : MainWindow("frmClientStartFrontend", "", kStyle),
      m_message(new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, 0, "lblMessage")),
      m_gauge(new wxGauge(this, wxID_ANY, 100)) {
    auto* all = new wxBoxSizer(wxVERTICAL);
    const auto margins = wxSizerFlags().Expand().Border(wxALL, FromDIP(12));
    all->Add(m_message, margins);
    all->Add(m_gauge, margins);
    all->SetMinSize(GetCharWidth() * kTextWidth, -1);
    SetSizer(all);
    NameForScreenReaders(*m_gauge, "Loading");
    m_pulse.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { m_gauge->Pulse(); });
}

void StartFrontendWindow::SetCaption(const Text& caption) {
    SetTitle(ToWx(caption));
}

void StartFrontendWindow::SetMessage(const Text& message) {
    m_message->SetLabel(ToWxLabel(message));
    m_message->Wrap(GetCharWidth() * kTextWidth);
    GetSizer()->SetSizeHints(this);
}

void StartFrontendWindow::Show() {
    CentreOnScreen();
    m_pulse.Start(kPulse);
    MainWindow::Show(true);
}

}  // namespace rvl
