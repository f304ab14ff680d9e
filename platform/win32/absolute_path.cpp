#include "platform/win32/absolute_path.h"

#include <windows.h>

namespace rvl::platform {

std::wstring AbsolutePath(const std::wstring& path) {
    std::wstring absolute;
    // Another thread may change the current folder between the calls.
    for (DWORD size = MAX_PATH;;) {
        absolute.resize(size);
        const DWORD length = GetFullPathNameW(path.c_str(), size, absolute.data(), nullptr);
        if (length < size) {
            absolute.resize(length);
            return absolute;
        }
        size = length + 1;
    }
}

}  // namespace rvl::platform
