#include "platform/files.h"

#include <windows.h>

#include "platform/win32/long_path.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

int CodeOf(BOOL done) {
    return done ? 0 : LastError();
}

/// One that cannot be opened for it, such as a read-only file, goes without.
int FlushToDisk(const std::wstring& path) {
    const UniqueHandle file = OwnHandle(CreateFileW(path.c_str(), FILE_WRITE_DATA | SYNCHRONIZE, kShareAll,
                                                    nullptr, OPEN_EXISTING, 0, nullptr));
    return file ? CodeOf(FlushFileBuffers(file.get())) : 0;
}

bool IsHeldBySomebody(int code) {
    return code == ERROR_ACCESS_DENIED || code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION;
}

/// A scanner or the shell that looks at either of the files just now is done with it in a moment.
int Replace(const std::wstring& from, const std::wstring& to) {
    constexpr int kTries = 5;
    constexpr DWORD kMilliseconds = 50;
    for (int tries = 1;; ++tries) {
        const int code =
            CodeOf(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
        if (!IsHeldBySomebody(code) || tries == kTries) return code;
        Sleep(kMilliseconds);
    }
}

}  // namespace

bool FileExists(const Text& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool DirectoryExists(const Text& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int FileLength(const Text& path, std::int64_t& bytes) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(LongPath(path).c_str(), GetFileExInfoStandard, &data)) return LastError();
    bytes = static_cast<std::int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
    return 0;
}

int MoveFileTo(const Text& source, const Text& destination) {
    const std::wstring from = LongPath(source);
    // On the disk before it takes the name: a power cut must not leave the new name with nothing behind it.
    if (const int code = FlushToDisk(from); code != 0) return code;
    return Replace(from, LongPath(destination));
}

int DeleteFileAt(const Text& path) {
    return CodeOf(DeleteFileW(LongPath(path).c_str()));
}

/// What is missing can only be the folder around it; Wine says otherwise of a missing drive.
int MakeDirectory(const Text& path) {
    const int code = CodeOf(CreateDirectoryW(LongPath(path).c_str(), nullptr));
    return code == ERROR_FILE_NOT_FOUND ? ERROR_PATH_NOT_FOUND : code;
}

int RemoveDirectoryAt(const Text& path) {
    return CodeOf(RemoveDirectoryW(LongPath(path).c_str()));
}

}  // namespace rvl::platform
