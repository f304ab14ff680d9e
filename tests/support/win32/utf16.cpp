#include "tests/support/win32/utf16.h"

#include <windows.h>

namespace rvl::test {

std::wstring Utf16(const std::string& utf8) {
    const auto size = static_cast<int>(utf8.size());
    std::wstring wide(utf8.size(), L'\0');
    wide.resize(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), size));
    return wide;
}

}  // namespace rvl::test
