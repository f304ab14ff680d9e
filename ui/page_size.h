#pragma once

#include <wx/gdicmn.h>

namespace rvl {

/// Of the tabs before the window gives them theirs: some controls complain when they get no room.
inline const wxSize kFirstPageSize(400, 200);

}  // namespace rvl
