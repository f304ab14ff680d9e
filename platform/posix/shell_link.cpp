#include "platform/shell_link.h"

#include <algorithm>

#include "platform/file_handle.h"
#include "platform/files.h"
#include "platform/full_path.h"
#include "platform/posix/link_format.h"

namespace rvl::platform {
namespace {

constexpr int kFileNotFound = 2;
constexpr int kBadFormat = 11;

/// Opens a new file beside the link: what a killed process left there is removed, what somebody put there to
/// lead elsewhere is not followed.
int OpenTemporary(const Text& temporary, FileHandle& file) {
    DeleteFileAt(temporary);
    return file.Open(temporary, FileAccess::Write, FileShare::None, FileDisposition::CreateNew);
}

/// MoveFileTo has the bytes on the disk before the name: a few milliseconds, for the two shortcuts of a
/// deployment, against one of length 0 after a power cut.
int ReplaceFile(const Text& path, const std::string& bytes) {
    FileHandle file;
    const Text temporary = path + ".new";
    if (const int code = OpenTemporary(temporary, file); code != 0) return code;
    std::size_t written = 0;
    int code = file.Write(bytes.data(), bytes.size(), written);
    file.Close();
    if (code == 0) code = MoveFileTo(temporary, path);
    if (code != 0) DeleteFileAt(temporary);
    return code;
}

/// The whole file; one too large for any shortcut is none.
int ReadSmallFile(const Text& path, std::string& bytes) {
    constexpr std::int64_t kLargestLink = 1 << 20;
    FileHandle file;
    int code = file.Open(path, FileAccess::Read, FileShare::ReadWrite, FileDisposition::OpenExisting);
    std::int64_t length = 0;
    if (code == 0) code = file.Length(length);
    if (code != 0) return code;
    if (length > kLargestLink) return kBadFormat;
    bytes.resize(static_cast<std::size_t>(length));
    std::size_t read = 0;
    code = file.Read(bytes.data(), bytes.size(), read);
    bytes.resize(read);
    return code;
}

}  // namespace

int WriteShellLink(const Text& path, const ShellLink& link) {
    ShellLink absolute = link;
    absolute.target.resize(std::min(link.target.size(), link.target.find('\0')));
    if (!absolute.target.empty())
        if (const int code = FullPath(absolute.target, absolute.target); code != 0) return code;
    std::string bytes;
    const int code = FormatLink(absolute, bytes);
    return code != 0 ? code : ReplaceFile(path, bytes);
}

int ReadShellLink(const Text& path, ShellLink& link) {
    std::string bytes;
    const int code = ReadSmallFile(path, bytes);
    return code != 0 ? code : ParseLink(bytes, link);
}

int ResolveShellLink(const Text& path, std::uint32_t, std::intptr_t, int, ShellLink& link) {
    if (const int code = ReadShellLink(path, link); code != 0) return code;
    return FileExists(link.target) || DirectoryExists(link.target) ? 0 : kFileNotFound;
}

}  // namespace rvl::platform
