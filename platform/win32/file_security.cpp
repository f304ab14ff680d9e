#include "platform/file_security.h"

#include <aclapi.h>

#include "platform/win32/account_sid.h"
#include "platform/win32/secured_file.h"
#include "platform/win32/security_descriptor.h"

namespace rvl::platform {
namespace {

HandOn HandOnOf(const SecuredFile& file) {
    return file.IsFolder() ? HandOn::ToNewEntries : HandOn::Nothing;
}

/// Lets what the folder above hands down come again. Only here the system carries the change on to what lies
/// in a folder.
int Unprotect(const SecuredFile& file) {
    ACL none = EmptyAccessList();
    return static_cast<int>(SetSecurityInfo(file.Handle(), SE_FILE_OBJECT,
                                            DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION,
                                            nullptr, nullptr, &none, nullptr));
}

int KeepInheritedAccess(const SecuredFile& file) {
    ObjectAccess access;
    if (const int code = access.Load(file.Handle()); code != 0) return code;
    if (access.isProtected || access.entries == nullptr) return Unprotect(file);
    UniqueAccessList inherited;
    const int code = InheritedEntries(*access.entries, inherited);
    return code != 0 ? code : StoreAccess(file.Handle(), *inherited, false);
}

/// The accounts that exist. A code for those whom the system could not look up for other reasons.
int FindAccounts(const std::vector<Text>& names, std::vector<AccountSid>& accounts) {
    int result = 0;
    for (const Text& name : names) {
        AccountSid account;
        const int code = account.Find(name);
        if (code == 0)
            accounts.push_back(std::move(account));
        else if (code != ERROR_NONE_MAPPED)
            result = code;
    }
    return result;
}

}  // namespace

int AddAccess(const Text& path, const Text& account, std::uint32_t mask) {
    std::vector<AccountSid> accounts(1);
    if (const int code = accounts[0].Find(account); code != 0) return code;
    SecuredFile file;
    if (const int code = file.Open(path, WRITE_DAC); code != 0) return code;
    ObjectAccess access;
    if (const int code = access.Load(file.Handle()); code != 0) return code;
    if (access.entries == nullptr) return 0;  // everybody has every right: a list would take them away
    UniqueAccessList after;
    const int code = GrantAccess(*access.entries, accounts, mask, HandOnOf(file), after);
    return code != 0 ? code : StoreAccess(file.Handle(), *after, access.isProtected);
}

int RemoveAllAccess(const Text& path, bool protect) {
    SecuredFile file;
    if (const int code = file.Open(path, WRITE_DAC); code != 0) return code;
    return protect ? StoreAccess(file.Handle(), EmptyAccessList(), true) : KeepInheritedAccess(file);
}

/// Those who could be looked up have their rights also when others could not: a laptop away from its domain.
int ReplaceAccess(const Text& path, const std::vector<Text>& accounts, std::uint32_t mask) {
    SecuredFile file;
    if (const int code = file.Open(path, WRITE_DAC); code != 0) return code;
    std::vector<AccountSid> found;
    const int lookup = FindAccounts(accounts, found);
    UniqueAccessList after;
    if (const int code = GrantAccess(EmptyAccessList(), found, mask, HandOnOf(file), after); code != 0)
        return code;
    const int code = StoreAccess(file.Handle(), *after, true);
    return code != 0 ? code : lookup;
}

/// The privilege to restore files, with which the item is opened, lets anybody be made the owner; without it
/// the code of the refusal tells. Everyone could be one then as well.
int SetFileOwner(const Text& path, const Text& account) {
    AccountSid owner;
    if (const int code = owner.Find(account); code != 0) return code;
    if (owner.IsEveryone()) return ERROR_INVALID_OWNER;
    SecuredFile file;
    if (const int code = file.Open(path, WRITE_OWNER); code != 0) return code;
    SECURITY_DESCRIPTOR descriptor{};
    const bool stored = InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) &&
                        SetSecurityDescriptorOwner(&descriptor, owner.Get(), FALSE) &&
                        SetKernelObjectSecurity(file.Handle(), OWNER_SECURITY_INFORMATION, &descriptor);
    return stored ? 0 : LastError();
}

}  // namespace rvl::platform
