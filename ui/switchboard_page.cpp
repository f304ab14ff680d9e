#include "ui/switchboard_page.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/accessibility.h"
#include "ui/page_size.h"

namespace rvl {
namespace {

constexpr const char* kHint =
    "There is nothing to start yet. Front ends appear here as soon as they are made available to you.";

}  // namespace

SwitchboardPage::SwitchboardPage(wxWindow* parent)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(kFirstPageSize)),
      m_hint(new wxStaticText(this, wxID_ANY, kHint)),
      m_list(new FrontendIcons(this)) {
    m_hint->SetMinSize(wxSize(FromDIP(100), -1));  // it breaks its lines
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(m_hint, wxSizerFlags().Expand().Border(wxALL, FromDIP(8)));
    all->Add(m_list, wxSizerFlags(1).Expand());
    SetSizer(all);
    m_list->SetName("lvwSwitchboard");
    NameForScreenReaders(*m_list, "Front ends");
    m_list->OnUpdated([this] { ShowHint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        m_hint->SetLabel(kHint);
        m_hint->Wrap(event.GetSize().GetWidth() - FromDIP(16));
        event.Skip();
    });
    m_list->Clear();
}

void SwitchboardPage::ShowHint() {
    if (m_hint->Show(m_list->GetItemCount() == 0)) Layout();
}

}  // namespace rvl
