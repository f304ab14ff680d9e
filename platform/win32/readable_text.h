#pragma once

#include <string_view>

#include "platform/text.h"

namespace rvl::platform {

/// What another program says, for people to read: "?" stands for a character above 255.
Text ReadableText(std::wstring_view wide);

}  // namespace rvl::platform
