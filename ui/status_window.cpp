#include "ui/status_window.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr int kTextWidth = 60;  // characters

}  // namespace

StatusWindow::StatusWindow(const char* formName, const Text& caption)
    : MainWindow(formName, ToWx(caption)), m_lines(new wxBoxSizer(wxVERTICAL)) {
    m_lines->SetMinSize(GetCharWidth() * kTextWidth, GetCharHeight() * 5);
    SetSizer(m_lines);
    m_lines->SetSizeHints(this);
    CentreOnScreen();
}

wxStaticText* StatusWindow::AddLine() {
    auto* line = new wxStaticText(this, wxID_ANY, "");
    m_lines->Add(line, wxSizerFlags().Expand().Border(wxALL, FromDIP(10)));
    return line;
}

void StatusWindow::SetLine(wxStaticText* line, const Text& text) {
    line->SetLabel(ToWxLabel(text));
    line->Wrap(std::max(GetClientSize().GetWidth(), GetCharWidth() * kTextWidth) - FromDIP(20));
    m_lines->SetSizeHints(this);
    Layout();
}

}  // namespace rvl
