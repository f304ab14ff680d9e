#include "ui/advanced_page.h"

#include <wx/sizer.h>

#include "ui/accessibility.h"
#include "ui/page_size.h"

namespace rvl {

AdvancedPage::AdvancedPage(wxWindow* parent)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(kFirstPageSize)),
      m_splitter(new Splitter(this)),
      m_list(new FrontendTable(m_splitter)),
      m_history(new VersionHistoryGrid(m_splitter)) {
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(m_splitter, wxSizerFlags(1).Expand());
    SetSizer(all);
    m_splitter->SplitVertically(m_list, m_history);
    m_splitter->SetPosition(GetCharWidth() * 38);
    m_list->SetName("lvwAdvanced");
    NameForScreenReaders(*m_splitter, "Front ends and version history; F8 and the arrow keys move the bar");
    NameForScreenReaders(*m_list, "Front ends with their versions");
    NameForScreenReaders(*m_history, "Version history");
}

}  // namespace rvl
