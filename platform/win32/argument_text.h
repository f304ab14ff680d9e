#pragma once

#include <string_view>

#include "platform/text.h"

namespace rvl::platform {

/// What follows the program name and the spaces behind it, unchanged. A character above 255 becomes "?", so
/// that the rest of the line is at least seen in the log.
Text ArgumentText(std::wstring_view commandLine);

}  // namespace rvl::platform
