#pragma once

#include <wx/panel.h>

#include "ui/frontend_icons.h"

class wxStaticText;

namespace rvl {

/// The first tab: the front ends as large icons, or a hint when there are none.
class SwitchboardPage : public wxPanel {
 public:
    explicit SwitchboardPage(wxWindow* parent);

    FrontendIcons& List() { return *m_list; }

 private:
    void ShowHint();

    wxStaticText* m_hint;  ///< owned by the toolkit, as every control
    FrontendIcons* m_list;
};

}  // namespace rvl
