#include <windows.h>

#include <optional>

#include "platform/files.h"
#include "platform/win32/long_path.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

/// A serial port or a pipe in the way must not hang the service.
bool IsDevice(const std::wstring& path) {
    return path.starts_with(L"\\\\.\\");
}

/// What a copy that has begun changes of its destination.
struct FileState {
    DWORD sizeHigh, sizeLow, writtenHigh, writtenLow;

    bool operator==(const FileState&) const = default;
};

std::optional<FileState> StateOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    const FILETIME& written = data.ftLastWriteTime;
    return FileState{data.nFileSizeHigh, data.nFileSizeLow, written.dwHighDateTime, written.dwLowDateTime};
}

/// Its attributes came along; the next copy must be able to overwrite it.
int ClearReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
    const DWORD others = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
    return others == attributes || SetFileAttributesW(path.c_str(), others) ? 0 : LastError();
}

}  // namespace

/// Half a file would pass for a whole one. A destination that somebody else holds open was not touched,
/// however it changes meanwhile.
int CopyFileTo(const Text& source, const Text& destination) {
    const std::wstring from = LongPath(source), to = LongPath(destination);
    if (IsDevice(from) || IsDevice(to)) return ERROR_ACCESS_DENIED;
    const auto before = StateOf(to);
    if (CopyFileW(from.c_str(), to.c_str(), FALSE)) return ClearReadOnly(to);
    const int code = LastError();
    if (code != ERROR_SHARING_VIOLATION && StateOf(to) != before) DeleteFileW(to.c_str());
    return code;
}

}  // namespace rvl::platform
