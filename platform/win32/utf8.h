#pragma once

#include <string>
#include <string_view>

namespace rvl::platform {

/// For what takes UTF-8, whatever characters the text has; half a surrogate pair becomes U+FFFD.
std::string Utf8(std::wstring_view wide);

}  // namespace rvl::platform
