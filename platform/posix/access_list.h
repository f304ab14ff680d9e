#pragma once

#include <sys/acl.h>

#include <string>
#include <vector>

#include "platform/posix/host_accounts.h"

namespace rvl::platform {

/// Read 4, write 2, execute 1, as in a file mode.
using AccessRights = unsigned;

/// The POSIX access list of a file, or the one that a folder gives to what is created in it. The entries hold
/// what they really grant: the list's mask is applied when it is read and made anew when it is written, so
/// that a new right takes effect and none that the mask hid comes back.
class AccessList {
 public:
    AccessList() = default;  ///< no entries: a folder that gives none
    static AccessList OwnerOnly(AccessRights rights);

    /// Both return 0 or a Win32 error code.
    int Load(const char* hostPath, acl_type_t type);
    int Store(const char* hostPath, acl_type_t type) const;

    /// What a folder with this list gives when nothing else is said: the same to group and others, and all
    /// rights to whoever creates something.
    AccessList ForNewEntries() const;

    bool IsEmpty() const { return m_entries.empty(); }
    void Grant(const HostAccount& account, AccessRights rights);

    /// Gives the file's owner what its named entry says: an owner's rights come from the owner's entry alone.
    void RaiseOwner(uid_t owner);

    bool operator==(const AccessList&) const = default;

 private:
    struct Entry {
        acl_tag_t tag;
        id_t id;  ///< of a named user or group, else 0
        AccessRights rights;

        bool IsNamed() const { return tag == ACL_USER || tag == ACL_GROUP; }
        bool IsMasked() const { return IsNamed() || tag == ACL_GROUP_OBJ; }
        bool operator==(const Entry&) const = default;
    };

    static Entry ReadEntry(acl_entry_t entry);
    static bool AppendEntry(acl_t& list, const Entry& entry);
    Entry* Find(acl_tag_t tag, id_t id = 0);
    void ApplyMask(AccessRights mask);
    AccessRights Mask() const;
    bool NeedsMask() const;

    std::vector<Entry> m_entries;
};

}  // namespace rvl::platform
