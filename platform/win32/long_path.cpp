#include "platform/win32/long_path.h"

#include "platform/win32/absolute_path.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

bool IsOnDrive(const std::wstring& absolute) {
    return absolute.size() >= 3 && absolute[1] == L':' && absolute[2] == L'\\';
}

/// "\\server\share\...", but neither "\\.\device" nor "\\?\..."
bool IsOnShare(const std::wstring& absolute) {
    return absolute.size() >= 3 && absolute.starts_with(L"\\\\") && absolute[2] != L'.' &&
           absolute[2] != L'?';
}

}  // namespace

std::wstring LongPath(const Text& path) {
    // A call would read it up to the NUL and find another file; it refuses the empty one.
    if (path.find('\0') != Text::npos) return {};
    std::wstring absolute = AbsolutePath(Wide(path));
    if (absolute.empty()) return Wide(path);
    if (IsOnDrive(absolute)) return L"\\\\?\\" + absolute;
    if (IsOnShare(absolute)) return L"\\\\?\\UNC" + absolute.substr(1);
    return absolute;
}

}  // namespace rvl::platform
