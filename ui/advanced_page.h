#pragma once

#include <wx/panel.h>

#include "ui/frontend_table.h"
#include "ui/splitter.h"
#include "ui/version_history_grid.h"

namespace rvl {

/// The second tab: the front ends with their versions, and the version history of one of them.
class AdvancedPage : public wxPanel {
 public:
    explicit AdvancedPage(wxWindow* parent);

    Splitter& Bar() { return *m_splitter; }
    FrontendTable& List() { return *m_list; }
    VersionHistoryGrid& History() { return *m_history; }

 private:
    Splitter* m_splitter;  ///< owned by the toolkit, as every control
    FrontendTable* m_list;
    VersionHistoryGrid* m_history;
};

}  // namespace rvl
