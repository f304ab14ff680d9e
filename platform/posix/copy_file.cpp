#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <limits>

#include "platform/files.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/errno_mapping.h"
#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

constexpr int kPathNotFound = 3;
constexpr int kAccessDenied = 5;
constexpr int kSharingViolation = 32;

bool AreSame(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

int WriteAll(int to, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(to, bytes, size);
        if (written < 0 && errno != EINTR) return Win32LastError();
        if (written > 0) bytes += written, size -= static_cast<std::size_t>(written);
    }
    return 0;
}

int CopyThroughBuffer(int from, int to) {
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t size = read(from, buffer.data(), buffer.size());
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) return size < 0 ? Win32LastError() : 0;
        if (const int code = WriteAll(to, buffer.data(), static_cast<std::size_t>(size)); code != 0)
            return code;
    }
}

/// Within the system where the file systems can; they say at the first try when they cannot.
int CopyContent(int from, int to) {
    constexpr std::size_t kAtOnce = std::numeric_limits<int>::max() / 2;
    for (bool begun = false;; begun = true) {
        const ssize_t size = copy_file_range(from, nullptr, to, nullptr, kAtOnce, 0);
        if (size == 0)
            return begun ? 0 : CopyThroughBuffer(from, to);  // some systems' own files tell no length
        if (size < 0 && begun) return Win32LastError();
        if (size < 0) return CopyThroughBuffer(from, to);
    }
}

/// The permission bits go along, so that a copied program stays a program; its owner can always write it.
int CopyOpened(int from, int to, mode_t mode) {
    if (ftruncate(to, 0) != 0) return Win32LastError();
    if (const int code = CopyContent(from, to); code != 0) return code;
    return fchmod(to, (mode & 07777) | S_IWUSR) != 0 ? Win32LastError() : 0;
}

}  // namespace

int CopyFileTo(const Text& source, const Text& destination) {
    constexpr int kCommon =
        O_CLOEXEC | O_NONBLOCK;  // a pipe or a device in the way must not hang the service
    const std::string fromHost = HostPath(source), toHost = HostPath(destination);
    if (fromHost.empty() || toHost.empty()) return kPathNotFound;
    const Descriptor from(open(fromHost.c_str(), O_RDONLY | kCommon));
    if (!from.IsOpen()) return Win32OpenError(fromHost);
    const Descriptor to(open(toHost.c_str(), O_WRONLY | O_CREAT | kCommon, 0666));
    if (!to.IsOpen()) return Win32OpenError(toHost);
    struct stat fromStatus {
    }, toStatus{};
    if (fstat(from.Get(), &fromStatus) != 0 || fstat(to.Get(), &toStatus) != 0) return Win32LastError();
    if (!S_ISREG(fromStatus.st_mode) || !S_ISREG(toStatus.st_mode)) return kAccessDenied;
    if (AreSame(fromStatus, toStatus)) return kSharingViolation;  // truncating it would lose the file
    const int code = CopyOpened(from.Get(), to.Get(), fromStatus.st_mode);
    if (code != 0) unlink(toHost.c_str());  // half a file would pass for a whole one
    return code;
}

}  // namespace rvl::platform
