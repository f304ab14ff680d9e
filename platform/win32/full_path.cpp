#include "platform/full_path.h"

#include <windows.h>

#include <utility>

#include "platform/win32/absolute_path.h"
#include "platform/win32/wide.h"

namespace rvl::platform {

int FullPath(const Text& path, Text& absolute) {
    if (path.empty() || path.find('\0') != Text::npos) return ERROR_INVALID_NAME;
    const std::wstring found = AbsolutePath(Wide(path));
    if (found.empty()) return ERROR_INVALID_NAME;
    if (found.size() >= kPathBuffer) return ERROR_FILENAME_EXCED_RANGE;
    std::optional<Text> text = TryNarrow(found);
    if (!text) return ERROR_INVALID_NAME;  // the current folder is no Text
    absolute = std::move(*text);
    return 0;
}

}  // namespace rvl::platform
