#include "platform/win32/security_descriptor.h"

#include <aclapi.h>

#include <algorithm>
#include <iterator>

#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

/// The system's calls take lists that they only read as if they changed them.
ACL* Unchanged(const ACL& list) {
    return const_cast<ACL*>(&list);
}

EXPLICIT_ACCESSW Grant(PSID account, DWORD mask, HandOn handOn) {
    EXPLICIT_ACCESSW grant{};
    grant.grfAccessPermissions = mask;
    grant.grfAccessMode = GRANT_ACCESS;
    grant.grfInheritance =
        handOn == HandOn::ToNewEntries ? SUB_CONTAINERS_AND_OBJECTS_INHERIT : NO_INHERITANCE;
    grant.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    grant.Trustee.ptstrName = static_cast<wchar_t*>(account);
    return grant;
}

/// Generic rights as what they mean for files.
DWORD FileRights(DWORD mask) {
    GENERIC_MAPPING mapping{FILE_GENERIC_READ, FILE_GENERIC_WRITE, FILE_GENERIC_EXECUTE, FILE_ALL_ACCESS};
    MapGenericMask(&mask, &mapping);
    return mask;
}

}  // namespace

int ObjectAccess::Load(HANDLE object) {
    PSECURITY_DESCRIPTOR loaded = nullptr;
    const DWORD code = GetSecurityInfo(object, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                       &entries, nullptr, &loaded);
    descriptor.reset(loaded);
    if (code != ERROR_SUCCESS) return static_cast<int>(code);
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (!GetSecurityDescriptorControl(loaded, &control, &revision)) return LastError();
    isProtected = (control & SE_DACL_PROTECTED) != 0;
    return 0;
}

int GrantAccess(const ACL& before, const std::vector<AccountSid>& accounts, DWORD mask, HandOn handOn,
                UniqueAccessList& after) {
    std::vector<EXPLICIT_ACCESSW> grants;
    std::transform(accounts.begin(), accounts.end(), std::back_inserter(grants),
                   [&](const AccountSid& account) { return Grant(account.Get(), FileRights(mask), handOn); });
    ACL* list = nullptr;
    const DWORD code =
        SetEntriesInAclW(static_cast<ULONG>(grants.size()), grants.data(), Unchanged(before), &list);
    after.reset(list);
    return static_cast<int>(code);
}

int InheritedEntries(const ACL& before, UniqueAccessList& inherited) {
    inherited.reset(static_cast<ACL*>(LocalAlloc(LMEM_FIXED, before.AclSize)));
    if (!inherited || !InitializeAcl(inherited.get(), before.AclSize, before.AclRevision)) return LastError();
    for (DWORD index = 0; index < before.AceCount; ++index) {
        void* entry = nullptr;
        if (!GetAce(Unchanged(before), index, &entry)) return LastError();
        const auto* header = static_cast<const ACE_HEADER*>(entry);
        if ((header->AceFlags & INHERITED_ACE) == 0) continue;
        if (!AddAce(inherited.get(), before.AclRevision, MAXDWORD, entry, header->AceSize))
            return LastError();
    }
    return 0;
}

ACL EmptyAccessList() {
    ACL list{};
    InitializeAcl(&list, sizeof list, ACL_REVISION);
    return list;
}

/// The two flags of inheritance belong together: they keep the mark that inherited entries are told from the
/// others, which the system takes away otherwise.
int StoreAccess(HANDLE object, const ACL& entries, bool isProtected) {
    constexpr SECURITY_DESCRIPTOR_CONTROL kInherited = SE_DACL_AUTO_INHERIT_REQ | SE_DACL_AUTO_INHERITED;
    const SECURITY_DESCRIPTOR_CONTROL control = kInherited | (isProtected ? SE_DACL_PROTECTED : 0);
    SECURITY_DESCRIPTOR descriptor{};
    const bool complete = InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) &&
                          SetSecurityDescriptorDacl(&descriptor, TRUE, Unchanged(entries), FALSE) &&
                          SetSecurityDescriptorControl(&descriptor, kInherited | SE_DACL_PROTECTED, control);
    const SECURITY_INFORMATION parts =
        DACL_SECURITY_INFORMATION | (isProtected ? PROTECTED_DACL_SECURITY_INFORMATION : 0);
    return complete && SetKernelObjectSecurity(object, parts, &descriptor) ? 0 : LastError();
}

}  // namespace rvl::platform
