#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "platform/file_handle.h"
#include "platform/posix/errno_mapping.h"
#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

constexpr int kFileNotFound = 2;
constexpr int kPathNotFound = 3;
constexpr int kAccessDenied = 5;

int Win32LastError() {
    return Win32ErrorFromErrno(errno);
}

bool StatusOf(const Text& path, struct stat& status) {
    const std::string host = HostPath(path);
    return !host.empty() && stat(host.c_str(), &status) == 0;
}

/// Gives the copy the source's permission bits, so that a copied program stays a program; its owner can
/// always write it.
int CopyMode(const Text& source, const Text& destination) {
    struct stat status {};
    if (!StatusOf(source, status)) return kFileNotFound;
    return chmod(HostPath(destination).c_str(), (status.st_mode & 07777) | S_IWUSR) != 0 ? Win32LastError()
                                                                                         : 0;
}

int CopyContent(FileHandle& from, FileHandle& to) {
    std::array<char, 65536> buffer;
    for (;;) {
        std::size_t read = 0;
        if (const int code = from.Read(buffer.data(), buffer.size(), read); code != 0) return code;
        if (read == 0) return 0;
        std::size_t written = 0;
        if (const int code = to.Write(buffer.data(), read, written); code != 0) return code;
    }
}

int FlushToDisk(const std::string& host) {
    const int descriptor = ::open(host.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return Win32LastError();
    const int code = ::fsync(descriptor) != 0 ? Win32LastError() : 0;
    ::close(descriptor);
    return code;
}

bool IsSameFile(const Text& one, const Text& other) {
    struct stat first {
    }, second{};
    return StatusOf(one, first) && StatusOf(other, second) && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

}  // namespace

bool FileExists(const Text& path) {
    struct stat status {};
    return StatusOf(path, status) && !S_ISDIR(status.st_mode);
}

bool DirectoryExists(const Text& path) {
    struct stat status {};
    return StatusOf(path, status) && S_ISDIR(status.st_mode);
}

int FileLength(const Text& path, std::int64_t& bytes) {
    struct stat status {};
    if (!StatusOf(path, status)) return kFileNotFound;
    bytes = status.st_size;
    return 0;
}

int CopyFileTo(const Text& source, const Text& destination) {
    constexpr int kSharingViolation = 32;
    if (IsSameFile(source, destination)) return kSharingViolation;  // truncating it would lose the file
    FileHandle from, to;
    int code = from.Open(source, FileAccess::Read, FileShare::Read, FileDisposition::OpenExisting);
    if (code != 0) return code;
    code = to.Open(destination, FileAccess::Write, FileShare::None, FileDisposition::CreateAlways);
    if (code != 0) return code;
    code = CopyContent(from, to);
    return code != 0 ? code : CopyMode(source, destination);
}

int MoveFileTo(const Text& source, const Text& destination) {
    const std::string from = HostPath(source), to = HostPath(destination);
    if (from.empty() || to.empty()) return kPathNotFound;
    // On the disk before it takes the name: a power cut must not leave the new name with nothing behind it.
    if (const int code = FlushToDisk(from); code != 0) return code;
    return std::rename(from.c_str(), to.c_str()) != 0 ? Win32LastError() : 0;
}

int DeleteFileAt(const Text& path) {
    const std::string host = HostPath(path);
    if (host.empty()) return kPathNotFound;
    if (::unlink(host.c_str()) == 0) return 0;
    return errno == EISDIR ? kAccessDenied : Win32LastError();
}

int MakeDirectory(const Text& path) {
    const std::string host = HostPath(path);
    if (host.empty()) return kPathNotFound;
    if (::mkdir(host.c_str(), 0777) == 0) return 0;
    return errno == ENOENT ? kPathNotFound : Win32LastError();
}

int RemoveDirectoryAt(const Text& path) {
    constexpr int kNotADirectory = 267;
    const std::string host = HostPath(path);
    if (host.empty()) return kPathNotFound;
    if (::rmdir(host.c_str()) == 0) return 0;
    return errno == ENOTDIR ? kNotADirectory : Win32LastError();
}

}  // namespace rvl::platform
