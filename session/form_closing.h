#pragma once

#include "session/switchboard_view.h"

namespace rvl {

inline constexpr const char* kSwitchboardForm = "frmClientMain";

/// Closes every form of the process, the switchboard last; when one stays, the process is ended.
void CloseAllForms(SwitchboardView& view);

}  // namespace rvl
