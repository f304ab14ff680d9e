#pragma once

#include <sys/stat.h>

#include <string>

#include "platform/text.h"

namespace rvl::platform {

/// A file or folder held fast while its rights are changed, without being read: the name may mean another
/// file a moment later. A symbolic link at the path's end is followed when root or our own account made it;
/// one of another account is refused, since a user could lay one where a deployment will grant rights, and
/// have the rights to any file of the host granted by the service, which is root. (Links on the way are
/// followed, as wherever a path is used.)
class SecuredFile {
 public:
    SecuredFile() = default;
    ~SecuredFile();
    SecuredFile(const SecuredFile&) = delete;
    SecuredFile& operator=(const SecuredFile&) = delete;

    /// 0 or a Win32 error code: 5 for a link of another account.
    int Open(const Text& path);

    const char* HostPath() const { return m_path.c_str(); }
    uid_t Owner() const { return m_status.st_uid; }
    unsigned OwnerRights() const { return (m_status.st_mode >> 6) & 7; }
    bool IsFolder() const { return S_ISDIR(m_status.st_mode); }

 private:
    int OpenStep(const std::string& host);
    void Close();

    int m_descriptor = -1;
    std::string m_path;
    struct stat m_status {};
};

}  // namespace rvl::platform
