#pragma once

#include <string>

namespace rvl::test {

/// A host text (UTF-8) as the system's wide-character calls take it.
std::wstring Utf16(const std::string& utf8);

}  // namespace rvl::test
