#include "platform/posix/access_list.h"

#include <acl/libacl.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

#include "platform/posix/errno_mapping.h"

namespace rvl::platform {
namespace {

constexpr AccessRights kAllRights = 7;

class AclHandle {
 public:
    explicit AclHandle(acl_t list) : m_list(list) {}
    ~AclHandle() {
        if (m_list != nullptr) acl_free(m_list);
    }
    AclHandle(const AclHandle&) = delete;
    AclHandle& operator=(const AclHandle&) = delete;

    acl_t& Get() { return m_list; }

 private:
    acl_t m_list;
};

id_t QualifierOf(acl_entry_t entry) {
    void* const qualifier = acl_get_qualifier(entry);
    if (qualifier == nullptr) return 0;
    const id_t id = *static_cast<const id_t*>(qualifier);
    acl_free(qualifier);
    return id;
}

}  // namespace

AccessList AccessList::OwnerOnly(AccessRights rights) {
    AccessList list;
    list.m_entries = {{ACL_USER_OBJ, 0, rights}, {ACL_GROUP_OBJ, 0, 0}, {ACL_OTHER, 0, 0}};
    return list;
}

AccessList::Entry AccessList::ReadEntry(acl_entry_t entry) {
    Entry read{ACL_UNDEFINED_TAG, 0, 0};
    acl_permset_t rights{};
    acl_get_tag_type(entry, &read.tag);
    acl_get_permset(entry, &rights);
    for (const acl_perm_t right : {ACL_READ, ACL_WRITE, ACL_EXECUTE})
        if (acl_get_perm(rights, right) == 1) read.rights |= right;
    if (read.IsNamed()) read.id = QualifierOf(entry);
    return read;
}

bool AccessList::AppendEntry(acl_t& list, const Entry& entry) {
    acl_entry_t added{};
    acl_permset_t rights{};
    if (acl_create_entry(&list, &added) != 0 || acl_set_tag_type(added, entry.tag) != 0) return false;
    if (entry.IsNamed() && acl_set_qualifier(added, &entry.id) != 0) return false;
    return acl_get_permset(added, &rights) == 0 && acl_add_perm(rights, entry.rights) == 0;
}

int AccessList::Load(const char* hostPath, acl_type_t type) {
    AclHandle list(acl_get_file(hostPath, type));
    if (list.Get() == nullptr) return Win32ErrorFromErrno(errno);
    m_entries.clear();
    AccessRights mask = kAllRights;
    acl_entry_t entry{};
    for (int which = ACL_FIRST_ENTRY; acl_get_entry(list.Get(), which, &entry) == 1; which = ACL_NEXT_ENTRY) {
        const Entry read = ReadEntry(entry);
        if (read.tag == ACL_MASK)
            mask = read.rights;
        else
            m_entries.push_back(read);
    }
    ApplyMask(mask);
    return 0;
}

int AccessList::Store(const char* hostPath, acl_type_t type) const {
    AclHandle list(acl_init(static_cast<int>(m_entries.size() + 1)));
    bool complete = list.Get() != nullptr;
    for (const Entry& entry : m_entries)
        complete = complete && AppendEntry(list.Get(), entry);
    if (NeedsMask()) complete = complete && AppendEntry(list.Get(), {ACL_MASK, 0, Mask()});
    const bool stored = complete && acl_set_file(hostPath, type, list.Get()) == 0;
    return stored ? 0 : Win32ErrorFromErrno(errno);
}

AccessList AccessList::ForNewEntries() const {
    AccessList list;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(list.m_entries),
                 [](const Entry& entry) { return !entry.IsNamed(); });
    if (Entry* owner = list.Find(ACL_USER_OBJ)) owner->rights = kAllRights;
    return list;
}

/// Everyone is everyone: POSIX gives the rights of "other" only to those for whom no other entry stands, so a
/// grant to Everyone goes into every entry, and a new entry starts with what Everyone has. (The groups of a
/// user are another matter: a user's own entry hides what the groups have.)
void AccessList::Grant(const HostAccount& account, AccessRights rights) {
    if (account.kind == HostAccount::Kind::Everyone) {
        for (Entry& entry : m_entries)
            entry.rights |= rights;
        return;
    }
    const acl_tag_t tag = account.kind == HostAccount::Kind::User ? ACL_USER : ACL_GROUP;
    if (Entry* entry = Find(tag, account.id)) {
        entry->rights |= rights;
        return;
    }
    const Entry* everyone = Find(ACL_OTHER);
    m_entries.push_back({tag, account.id, rights | (everyone != nullptr ? everyone->rights : 0)});
}

void AccessList::RaiseOwner(uid_t owner) {
    const Entry* named = Find(ACL_USER, owner);
    Entry* own = Find(ACL_USER_OBJ);
    if (named != nullptr && own != nullptr) own->rights |= named->rights;
}

AccessList::Entry* AccessList::Find(acl_tag_t tag, id_t id) {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return entry.tag == tag && entry.id == id; });
    return found == m_entries.end() ? nullptr : &*found;
}

void AccessList::ApplyMask(AccessRights mask) {
    for (Entry& entry : m_entries)
        if (entry.IsMasked()) entry.rights &= mask;
}

/// The least mask that hides nothing.
AccessRights AccessList::Mask() const {
    AccessRights mask = 0;
    for (const Entry& entry : m_entries)
        if (entry.IsMasked()) mask |= entry.rights;
    return mask;
}

bool AccessList::NeedsMask() const {
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [](const Entry& entry) { return entry.IsNamed(); });
}

}  // namespace rvl::platform
