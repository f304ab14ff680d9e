#include "platform/environment.h"

#include <windows.h>

#include "platform/win32/wide.h"

namespace rvl::platform {

std::optional<Text> EnvironmentVariable(TextView name) {
    if (name.empty() || name.find('\0') != TextView::npos) return std::nullopt;
    const std::wstring wide = Wide(name);
    std::wstring value;
    // Another thread may change it between the calls.
    for (DWORD size = MAX_PATH;;) {
        value.resize(size);
        SetLastError(ERROR_SUCCESS);  // an empty value leaves it alone
        const DWORD length = GetEnvironmentVariableW(wide.c_str(), value.data(), size);
        if (length == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
        if (length < size) {
            value.resize(length);
            return TryNarrow(value);
        }
        size = length;
    }
}

}  // namespace rvl::platform
