#include "ui/minimum_size.h"

#include <wx/display.h>
#include <wx/sizer.h>

namespace rvl {

void EnforceMinimumSize(wxTopLevelWindow& window, const wxSize& smallest) {
    wxSize size = window.FromDIP(smallest);
    if (window.GetSizer() != nullptr) size.IncTo(window.ClientToWindowSize(window.GetSizer()->GetMinSize()));
    size.DecTo(wxDisplay(&window).GetClientArea().GetSize());
    window.SetMinSize(size);
    wxSize grown = window.GetSize();
    grown.IncTo(size);
    if (grown != window.GetSize()) window.SetSize(grown);
}

}  // namespace rvl
