#include "platform/special_folders.h"

#include <windows.h>

#include <shlobj.h>

#include "platform/win32/wide.h"

namespace rvl::platform {

/// Like the system's own, it need not exist. The path ends with a separator.
Text SpecialFolderPath(SpecialFolder folder) {
    std::wstring path(MAX_PATH, L'\0');
    const int number = static_cast<int>(folder) | CSIDL_FLAG_DONT_VERIFY;
    if (SHGetFolderPathW(nullptr, number, nullptr, SHGFP_TYPE_CURRENT, path.data()) != S_OK) return "";
    const Text text = TryNarrow(path.c_str()).value_or("");
    return text.empty() || text.ends_with('\\') ? text : text + '\\';
}

}  // namespace rvl::platform
