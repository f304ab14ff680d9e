#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "platform/posix/errno_mapping.h"
#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

constexpr int kFileNotFound = 2;
constexpr int kPathNotFound = 3;
constexpr int kAccessDenied = 5;

bool StatusOf(const Text& path, struct stat& status) {
    const std::string host = HostPath(path);
    return !host.empty() && stat(host.c_str(), &status) == 0;
}

int FlushToDisk(const std::string& host) {
    const int descriptor = ::open(host.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return Win32LastError();
    const int code = ::fsync(descriptor) != 0 ? Win32LastError() : 0;
    ::close(descriptor);
    return code;
}

/// The slower way, for a file that may not be opened for writing: is it the program of a process that may be
/// looked at?
bool HasProcess(const struct stat& program) {
    std::error_code unreadable;
    for (const auto& process : std::filesystem::directory_iterator("/proc", unreadable)) {
        struct stat status {};
        const std::string executable = process.path().string() + "/exe";
        if (stat(executable.c_str(), &status) == 0 && status.st_dev == program.st_dev &&
            status.st_ino == program.st_ino)
            return true;
    }
    return false;
}

/// The system itself would let a running program be deleted or replaced; the logic counts on what Windows
/// does. Opening for writing asks without changing anything.
bool IsRunning(const std::string& host) {
    struct stat status {};
    if (lstat(host.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || (status.st_mode & 0111) == 0)
        return false;
    const int descriptor = ::open(host.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor >= 0) ::close(descriptor);
    return descriptor < 0 && (errno == ETXTBSY || (errno == EACCES && HasProcess(status)));
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

bool IsRunningProgram(const Text& path) {
    const std::string host = HostPath(path);
    return !host.empty() && IsRunning(host);
}

int MoveFileTo(const Text& source, const Text& destination) {
    const std::string from = HostPath(source), to = HostPath(destination);
    if (from.empty() || to.empty()) return kPathNotFound;
    if (IsRunning(to)) return kAccessDenied;
    // On the disk before it takes the name: a power cut must not leave the new name with nothing behind it.
    if (const int code = FlushToDisk(from); code != 0) return code;
    return std::rename(from.c_str(), to.c_str()) != 0 ? Win32LastError() : 0;
}

int DeleteFileAt(const Text& path) {
    const std::string host = HostPath(path);
    if (host.empty()) return kPathNotFound;
    if (IsRunning(host)) return kAccessDenied;
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
