#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace rvl::platform {

/// A Text as the system's wide-character calls take it.
std::wstring Wide(TextView text);

/// A character above 255 raises "Conversion would cause data loss".
Text Narrow(std::wstring_view wide);

/// None where Narrow would raise.
std::optional<Text> TryNarrow(std::wstring_view wide);

}  // namespace rvl::platform
