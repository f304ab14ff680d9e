#include <windows.h>

#include <array>
#include <memory>

#include "platform/file_security.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

constexpr std::size_t kMostSubAuthorities = 8;

struct FreeAllocatedSid {
    void operator()(void* sid) const { FreeSid(sid); }
};
using UniqueSid = std::unique_ptr<void, FreeAllocatedSid>;

/// Null when the numbers make no identifier.
UniqueSid BuildSid(std::uint8_t authority, const std::vector<std::uint32_t>& numbers) {
    if (numbers.empty() || numbers.size() > kMostSubAuthorities) return nullptr;
    std::array<DWORD, kMostSubAuthorities> all{};
    std::copy(numbers.begin(), numbers.end(), all.begin());
    SID_IDENTIFIER_AUTHORITY identifier{{0, 0, 0, 0, 0, authority}};
    PSID sid = nullptr;
    AllocateAndInitializeSid(&identifier, static_cast<BYTE>(numbers.size()), all[0], all[1], all[2], all[3],
                             all[4], all[5], all[6], all[7], &sid);
    return UniqueSid(sid);
}

}  // namespace

/// A name that cannot become a Text is as good as none: the caller has English ones.
SidLookup LookupWellKnownAccount(std::uint8_t authority, const std::vector<std::uint32_t>& subAuthorities,
                                 AccountName& account) {
    const UniqueSid sid = BuildSid(authority, subAuthorities);
    if (!sid) return SidLookup::NotBuilt;
    std::array<wchar_t, 256> name{}, domain{};
    DWORD nameSize = name.size(), domainSize = domain.size();
    SID_NAME_USE kind{};
    if (!LookupAccountSidW(nullptr, sid.get(), name.data(), &nameSize, domain.data(), &domainSize, &kind))
        return SidLookup::Unknown;
    const auto narrowName = TryNarrow(name.data()), narrowDomain = TryNarrow(domain.data());
    if (!narrowName || !narrowDomain) return SidLookup::Unknown;
    account = {*narrowDomain, *narrowName};
    return SidLookup::Found;
}

bool EnableProcessPrivilege(const Text& name) {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token)) return false;
    const UniqueHandle owned(token);
    TOKEN_PRIVILEGES privileges{1, {{{}, SE_PRIVILEGE_ENABLED}}};
    if (!LookupPrivilegeValueW(nullptr, Wide(name).c_str(), &privileges.Privileges[0].Luid)) return false;
    // A privilege that the process does not hold is no failure of the call.
    return AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr) &&
           GetLastError() == ERROR_SUCCESS;
}

}  // namespace rvl::platform
