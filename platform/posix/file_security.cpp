#include "platform/file_security.h"

#include <unistd.h>

#include <cerrno>

#include "platform/posix/access_list.h"
#include "platform/posix/errno_mapping.h"
#include "platform/posix/secured_file.h"

namespace rvl::platform {
namespace {

constexpr int kNotSupported = 50;
constexpr int kInvalidOwner = 1307;
constexpr int kNoSuchAccount = 1332;

/// What a mask means here: the specific rights to a file's data, or a generic right that includes them. Other
/// rights (attributes, deletion, waiting) are nobody's or everybody's on POSIX systems.
AccessRights RightsOfMask(std::uint32_t mask) {
    constexpr std::uint32_t kAll = 0x10000000, kRead = 0x80000000, kWrite = 0x40000000, kExecute = 0x20000000;
    AccessRights rights = 0;
    if ((mask & (0x1 | kRead | kAll)) != 0) rights |= ACL_READ;
    if ((mask & (0x2 | kWrite | kAll)) != 0) rights |= ACL_WRITE;
    if ((mask & (0x20 | kExecute | kAll)) != 0) rights |= ACL_EXECUTE;
    return rights;
}

int StoreChange(const SecuredFile& file, acl_type_t type, const AccessList& before, const AccessList& after) {
    return after == before ? 0 : after.Store(file.HostPath(), type);
}

int GrantToNewEntries(const SecuredFile& folder, const AccessList& folderList, const HostAccount& account,
                      AccessRights rights) {
    AccessList before;
    if (const int code = before.Load(folder.HostPath(), ACL_TYPE_DEFAULT); code != 0) return code;
    AccessList after = before.IsEmpty() ? folderList.ForNewEntries() : before;
    after.Grant(account, rights);
    return StoreChange(folder, ACL_TYPE_DEFAULT, before, after);
}

bool IsUser(const HostAccount& account, uid_t id) {
    return account.kind == HostAccount::Kind::User && account.id == id;
}

int ChangeOwner(const SecuredFile& file, uid_t owner, gid_t group) {
    if (chown(file.HostPath(), owner, group) == 0) return 0;
    return errno == EPERM ? kInvalidOwner : Win32ErrorFromErrno(errno);
}

int RaiseOwner(const SecuredFile& file, uid_t owner) {
    AccessList before;
    if (const int code = before.Load(file.HostPath(), ACL_TYPE_ACCESS); code != 0)
        return code == kNotSupported ? 0 : code;  // nothing was granted by a list
    AccessList after = before;
    after.RaiseOwner(owner);
    return StoreChange(file, ACL_TYPE_ACCESS, before, after);
}

}  // namespace

/// The owner gets an entry of its own as well: it is what remains when another account becomes the owner.
int AddAccess(const Text& path, const Text& account, std::uint32_t mask) {
    const auto who = FindHostAccount(account);
    if (!who) return kNoSuchAccount;
    SecuredFile file;
    if (const int code = file.Open(path); code != 0) return code;
    AccessList before;
    if (const int code = before.Load(file.HostPath(), ACL_TYPE_ACCESS); code != 0) return code;
    const AccessRights rights = RightsOfMask(mask);
    if (rights == 0) return 0;  // an empty entry would take away what the account has by its groups
    AccessList after = before;
    after.Grant(*who, rights);
    if (IsUser(*who, file.Owner())) after.RaiseOwner(file.Owner());
    if (const int code = StoreChange(file, ACL_TYPE_ACCESS, before, after); code != 0) return code;
    return file.IsFolder() ? GrantToNewEntries(file, before, *who, rights) : 0;
}

/// Whether inherited entries are kept makes no difference here: a file takes its folder's default entries
/// over as its own when it is created, and nothing reaches it from above afterwards.
int RemoveAllAccess(const Text& path, bool /*protect*/) {
    SecuredFile file;
    if (const int code = file.Open(path); code != 0) return code;
    const AccessList list = AccessList::OwnerOnly(file.OwnerRights());
    if (const int code = list.Store(file.HostPath(), ACL_TYPE_ACCESS); code != 0) return code;
    if (!file.IsFolder() || acl_delete_def_file(file.HostPath()) == 0) return 0;
    return Win32ErrorFromErrno(errno);
}

/// The list is made in memory and written once: a deployment does this for each of its files.
int ReplaceAccess(const Text& path, const std::vector<Text>& accounts, std::uint32_t mask) {
    SecuredFile file;
    if (const int code = file.Open(path); code != 0) return code;
    AccessList list = AccessList::OwnerOnly(file.OwnerRights());
    AccessList forNewEntries = list.ForNewEntries();
    for (const Text& account : accounts) {
        const auto who = FindHostAccount(account);
        if (!who) continue;
        list.Grant(*who, RightsOfMask(mask));
        forNewEntries.Grant(*who, RightsOfMask(mask));
        if (IsUser(*who, file.Owner())) list.RaiseOwner(file.Owner());
    }
    if (const int code = list.Store(file.HostPath(), ACL_TYPE_ACCESS); code != 0) return code;
    return file.IsFolder() ? forNewEntries.Store(file.HostPath(), ACL_TYPE_DEFAULT) : 0;
}

/// A group owns through its group entry, with root as the owner: as on Windows, where what the Administrators
/// own belongs to no single user. The rights of the owner's and the group's entry pass on with the ownership.
int SetFileOwner(const Text& path, const Text& account) {
    const auto who = FindHostAccount(account);
    if (!who) return kNoSuchAccount;
    if (who->kind == HostAccount::Kind::Everyone) return kInvalidOwner;
    SecuredFile file;
    if (const int code = file.Open(path); code != 0) return code;
    const bool isUser = who->kind == HostAccount::Kind::User;
    const uid_t owner = isUser ? who->id : 0;
    constexpr auto kSameGroup = static_cast<gid_t>(-1);
    if (const int code = ChangeOwner(file, owner, isUser ? kSameGroup : who->id); code != 0) return code;
    return RaiseOwner(file, owner);
}

}  // namespace rvl::platform
