#include "platform/link_file.h"

#include "platform/file_handle.h"
#include "platform/files.h"

namespace rvl::platform {
namespace {

constexpr int kBadFormat = 11;

/// Opens a new file beside the link: what a killed process left there is removed, what somebody put there to
/// lead elsewhere is not followed.
int OpenTemporary(const Text& temporary, FileHandle& file) {
    DeleteFileAt(temporary);
    return file.Open(temporary, FileAccess::Write, FileShare::None, FileDisposition::CreateNew);
}

}  // namespace

int ReplaceLinkFile(const Text& path, const std::string& bytes) {
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

int ReadLinkFile(const Text& path, std::string& bytes) {
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

}  // namespace rvl::platform
