#pragma once

#include <string>

#include "platform/desktop_windows.h"

namespace rvl::test {

/// What xprop prints; the arguments are as a shell reads them.
std::string Xprop(platform::WindowHandle window, const std::string& arguments);

}  // namespace rvl::test
