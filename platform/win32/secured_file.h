#pragma once

#include "platform/text.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {

/// A file or folder held fast while its rights are changed: the name may mean another one a moment later. A
/// link or junction at the path's end is followed when the system, the administrators or our own account made
/// it; one of another account is refused, since a user could lay one where a deployment will grant rights,
/// and have the rights to any file granted by the service. (Links on the way are followed, as wherever a path
/// is used.)
class SecuredFile {
 public:
    /// With the rights to read its security and those asked for, which the service gets whatever the item's
    /// own rights are. 0 or a Win32 error code: 5 for a link of another account, 50 when the file system
    /// keeps no access lists.
    int Open(const Text& path, DWORD access);

    HANDLE Handle() const { return m_handle.get(); }
    bool IsFolder() const { return m_isFolder; }

 private:
    int OpenStep(const Text& path, DWORD access, DWORD flags, bool& isLink);

    UniqueHandle m_handle;
    bool m_isFolder = false;
};

}  // namespace rvl::platform
