#include "platform/posix/secured_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

#include "platform/posix/errno_mapping.h"
#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

/// Where an opened symbolic link leads; empty when that cannot be read.
std::string LinkTarget(int descriptor, const std::string& host) {
    std::array<char, PATH_MAX> buffer;
    const ssize_t size = readlinkat(descriptor, "", buffer.data(), buffer.size());
    if (size <= 0) return "";
    const std::string target(buffer.data(), static_cast<std::size_t>(size));
    return target.front() == '/' ? target : host.substr(0, host.rfind('/') + 1) + target;
}

}  // namespace

SecuredFile::~SecuredFile() {
    Close();
}

int SecuredFile::Open(const Text& path) {
    constexpr int kPathNotFound = 3, kAccessDenied = 5, kCannotResolve = 1921, kMostLinks = 40;
    std::string host = platform::HostPath(path);
    if (host.empty()) return kPathNotFound;
    for (int links = 0; links < kMostLinks; ++links) {
        if (const int code = OpenStep(host); code != 0) return code;
        if (!S_ISLNK(m_status.st_mode)) return 0;
        if (Owner() != 0 && Owner() != geteuid()) return kAccessDenied;
        host = LinkTarget(m_descriptor, host);
    }
    return kCannotResolve;
}

int SecuredFile::OpenStep(const std::string& host) {
    Close();
    m_descriptor = open(host.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
    if (m_descriptor < 0) return Win32OpenError(host);
    if (fstat(m_descriptor, &m_status) != 0) return Win32ErrorFromErrno(errno);
    // The descriptor's name: access lists are written by name, and only this one cannot change its meaning.
    m_path = "/proc/self/fd/" + std::to_string(m_descriptor);
    return 0;
}

void SecuredFile::Close() {
    if (m_descriptor >= 0) close(m_descriptor);
    m_descriptor = -1;
}

}  // namespace rvl::platform
