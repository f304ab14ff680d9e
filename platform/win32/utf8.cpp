#include "platform/win32/utf8.h"

#include <windows.h>

namespace rvl::platform {

std::string Utf8(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), size, nullptr, nullptr);
    return utf8;
}

}  // namespace rvl::platform
