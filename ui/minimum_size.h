#pragma once

#include <wx/toplevel.h>

namespace rvl {

/// Lets the user make the window no smaller than this, in device-independent pixels, nor smaller than what it
/// holds needs; a small screen sets the limit.
void EnforceMinimumSize(wxTopLevelWindow& window, const wxSize& smallest);

}  // namespace rvl
