#include "deploy/ntfs_permissions.h"

#include <vector>

#include "platform/file_security.h"
#include "runtime/log_file.h"
#include "runtime/system_information.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

constexpr int kNotSupported = 50;

Text AccountPart(const Text& name) {
    return name.substr(name.rfind('\\') + 1);  // all of it when there is no domain
}

struct BuiltInAccount {
    const char* function;
    std::uint8_t subAuthorityCount, authority;
    std::uint32_t firstSubAuthority, secondSubAuthority;
    const char* fallback;
};

/// Every deployed file asks for these names, which stay the same while the process runs: one that was looked
/// up is remembered, a fallback is not.
Text NameOf(const BuiltInAccount& account, Text& remembered) {
    if (!remembered.empty()) return remembered;
    const Text name = GetBuiltInName(account.subAuthorityCount, account.authority, account.firstSubAuthority,
                                     account.secondSubAuthority);
    if (!name.empty()) return remembered = AccountPart(name);
    Log(Text("Falling back on ") + account.function);
    return AccountPart(account.fallback);
}

}  // namespace

int RemoveAllPermissions(const Text& path, bool flag) {
    return IsWinNT() ? platform::RemoveAllAccess(path, flag) : kNotSupported;
}

int AddPermission(const Text& path, const Text& account, std::int32_t mask) {
    return IsWinNT() ? platform::AddAccess(path, account, static_cast<std::uint32_t>(mask)) : kNotSupported;
}

int ReplacePermissions(const Text& path, const std::vector<Text>& accounts, std::int32_t mask) {
    return IsWinNT() ? platform::ReplaceAccess(path, accounts, static_cast<std::uint32_t>(mask))
                     : kNotSupported;
}

int SetOwner(const Text& path, const Text& account) {
    if (!IsWinNT()) return kNotSupported;
    EnablePrivilege("SeTakeOwnershipPrivilege", false);  // without it the code of the refusal tells
    return platform::SetFileOwner(path, account);
}

Text GetBuiltInName(std::uint8_t subAuthorityCount, std::uint8_t authority, std::uint32_t firstSubAuthority,
                    std::uint32_t secondSubAuthority) {
    std::vector<std::uint32_t> subAuthorities{firstSubAuthority, secondSubAuthority};
    subAuthorities.resize(subAuthorityCount);
    platform::AccountName account;
    switch (platform::LookupWellKnownAccount(authority, subAuthorities, account)) {
        case platform::SidLookup::NotBuilt:
            Log("GetBuiltInName: AllocateAndInitializeSid failed");
            return "";
        case platform::SidLookup::Unknown:
            Log("GetBuiltInName: LookupAccountSid failed");
            return "";
        case platform::SidLookup::Found:
            break;
    }
    return account.domain.empty() ? account.name : account.domain + "\\" + account.name;
}

Text AdministratorsGroupName() {
    static Text name;
    return NameOf({"AdministratorsGroupName", 2, 5, 32, 544, "BUILTIN\\Administrators"}, name);
}

Text EveryoneGroupName() {
    static Text name;
    return NameOf({"EveryoneGroupName", 1, 1, 0, 0, "Everyone"}, name);
}

Text LocalSystemUsername() {
    static Text name;
    return NameOf({"LocalSystemUsername", 1, 5, 18, 0, "NT AUTHORITY\\SYSTEM"}, name);
}

bool EnablePrivilege(const Text& name, bool raiseErrors) try {
    return IsWinNT() && platform::EnableProcessPrivilege(name);
} catch (...) {
    if (raiseErrors) HandleErrorAndReRaise("PrivilegesModule.EnablePrivilege");
    return false;
}

}  // namespace rvl
