#include <unistd.h>

#include "platform/file_security.h"

namespace rvl::platform {
namespace {

struct WellKnownAccount {
    std::uint8_t authority;
    std::vector<std::uint32_t> subAuthorities;
    AccountName account;
};

}  // namespace

/// The names are those that account lookup knows here, whatever the host's language.
SidLookup LookupWellKnownAccount(std::uint8_t authority, const std::vector<std::uint32_t>& subAuthorities,
                                 AccountName& account) {
    constexpr std::size_t kMostSubAuthorities = 8;
    static const WellKnownAccount rows[] = {{5, {32, 544}, {"BUILTIN", "Administrators"}},
                                            {1, {0}, {"", "Everyone"}},
                                            {5, {18}, {"NT AUTHORITY", "SYSTEM"}}};
    if (subAuthorities.empty() || subAuthorities.size() > kMostSubAuthorities) return SidLookup::NotBuilt;
    for (const WellKnownAccount& row : rows)
        if (row.authority == authority && row.subAuthorities == subAuthorities) {
            account = row.account;
            return SidLookup::Found;
        }
    return SidLookup::Unknown;
}

/// Root holds every privilege and always uses it; others hold none that could be enabled.
bool EnableProcessPrivilege(const Text& name) {
    const bool known = name.starts_with("Se") && name.ends_with("Privilege");
    return known && geteuid() == 0;
}

}  // namespace rvl::platform
