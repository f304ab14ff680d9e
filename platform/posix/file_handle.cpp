#include "platform/file_handle.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/posix/errno_mapping.h"
#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

int AccessFlags(FileAccess access) {
    switch (access) {
        case FileAccess::Read:
            return O_RDONLY;
        case FileAccess::Write:
            return O_WRONLY;
        case FileAccess::Append:
            return O_WRONLY | O_APPEND;
        case FileAccess::ReadWrite:
            break;
    }
    return O_RDWR;
}

int DispositionFlags(FileDisposition disposition) {
    switch (disposition) {
        case FileDisposition::CreateNew:
            return O_CREAT | O_EXCL;
        case FileDisposition::CreateAlways:
            return O_CREAT | O_TRUNC;
        case FileDisposition::OpenAlways:
            return O_CREAT;
        case FileDisposition::OpenExisting:
            break;
    }
    return 0;
}

bool IsRegularFile(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

FileHandle::~FileHandle() {
    Close();
}

FileHandle::FileHandle(FileHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, -1)) {}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
}

int FileHandle::Open(const Text& path, FileAccess access, FileShare, FileDisposition disposition) {
    constexpr int kPathNotFound = 3, kAccessDenied = 5;
    Close();
    const std::string host = HostPath(path);
    if (host.empty()) return kPathNotFound;
    // O_NONBLOCK: a pipe or a device in the way must not hang the service.
    const int flags = AccessFlags(access) | DispositionFlags(disposition) | O_CLOEXEC | O_NONBLOCK;
    const int descriptor = ::open(host.c_str(), flags, 0666);
    if (descriptor < 0) return Win32OpenError(host);
    if (!IsRegularFile(descriptor)) {
        ::close(descriptor);
        return kAccessDenied;
    }
    m_handle = descriptor;
    return 0;
}

int FileHandle::Read(char* buffer, std::size_t size, std::size_t& read) {
    const ssize_t count = ::read(static_cast<int>(m_handle), buffer, size);
    read = count > 0 ? static_cast<std::size_t>(count) : 0;
    return count < 0 ? Win32LastError() : 0;
}

int FileHandle::Write(const char* data, std::size_t size, std::size_t& written) {
    written = 0;
    while (written < size) {
        const ssize_t count = ::write(static_cast<int>(m_handle), data + written, size - written);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Win32LastError();
        written += static_cast<std::size_t>(count);
    }
    return 0;
}

int FileHandle::Seek(std::int64_t offset, FileOrigin origin, std::int64_t& position) {
    const off_t result = ::lseek(static_cast<int>(m_handle), offset, static_cast<int>(origin));
    if (result < 0) return Win32LastError();
    position = result;
    return 0;
}

int FileHandle::Length(std::int64_t& bytes) const {
    struct stat status {};
    if (fstat(static_cast<int>(m_handle), &status) != 0) return Win32LastError();
    bytes = status.st_size;
    return 0;
}

void FileHandle::Close() {
    if (m_handle != -1) ::close(static_cast<int>(std::exchange(m_handle, -1)));
}

}  // namespace rvl::platform
