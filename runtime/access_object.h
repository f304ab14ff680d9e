#pragma once

#include <optional>

#include "platform/running_access.h"

namespace rvl {

/// The running Access of a main window, asked of the tools library, which is loaded first when it is not.
/// None when there is no such Access, or no library.
std::optional<platform::RunningAccess> GetAccessObjectByHwnd(platform::WindowHandle accessWindow);

}  // namespace rvl
