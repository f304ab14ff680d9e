#include "platform/posix/host_accounts.h"

#include <grp.h>
#include <pwd.h>

#include <map>

#include "platform/clock.h"
#include "platform/error.h"
#include "platform/latin1_case.h"

namespace rvl::platform {
namespace {

/// The host's table of users or of groups.
template <class Record>
struct AccountTable {
    HostAccount::Kind kind;
    Record* (*find)(const char* name);
    void (*rewind)();
    Record* (*next)();
    void (*close)();
    char* Record::*name;
    id_t Record::*id;

    HostAccount AccountOf(const Record& record) const { return {kind, record.*id}; }
};

constexpr AccountTable<passwd> kUsers{HostAccount::Kind::User, getpwnam,       setpwent, getpwent, endpwent,
                                      &passwd::pw_name,        &passwd::pw_uid};
constexpr AccountTable<group> kGroups{HostAccount::Kind::Group, getgrnam,      setgrent, getgrent, endgrent,
                                      &group::gr_name,          &group::gr_gid};

/// True when a host name reads like `folded` without regard to case.
bool MatchesFolded(const char* hostName, const Text& folded) {
    try {
        return LowerLatin1(TextFromUtf8(hostName)) == folded;
    } catch (const Error&) {
        return false;  // a name that is no Text matches none
    }
}

template <class Record>
std::optional<HostAccount> SearchTable(const AccountTable<Record>& table, const Text& folded) {
    std::optional<HostAccount> found;
    table.rewind();
    while (const Record* record = found ? nullptr : table.next())
        if (MatchesFolded(record->*table.name, folded)) found = table.AccountOf(*record);
    table.close();
    return found;
}

/// As spelled, then in lower case as hosts mostly spell names: both reach directories that cannot be
/// searched.
template <class Record>
std::optional<HostAccount> FindIn(const AccountTable<Record>& table, TextView name) {
    const Text folded = LowerLatin1(name);
    for (const TextView spelling : {name, TextView(folded)})
        if (const Record* record = table.find(Utf8FromText(spelling).c_str()))
            return table.AccountOf(*record);
    return SearchTable(table, folded);
}

std::optional<HostAccount> LookUp(TextView name) {
    const Text folded = LowerLatin1(name);
    if (folded == "everyone") return HostAccount{HostAccount::Kind::Everyone, 0};
    if (folded == "system") return HostAccount{HostAccount::Kind::User, 0};
    if (folded == "administrators") {
        const auto administrators = FindIn(kGroups, "sudo");
        return administrators ? administrators : FindIn(kGroups, "root");
    }
    const auto user = FindIn(kUsers, name);
    return user ? user : FindIn(kGroups, name);
}

struct Answer {
    std::optional<HostAccount> account;
    std::uint32_t tick;
};

}  // namespace

/// A deployment asks for the same four accounts thousands of times, and each look into the host's tables
/// opens and reads files, all of them for an account that is not there. A second is long enough to look once
/// per hundreds of files, and short enough that an account added or removed is soon noticed.
std::optional<HostAccount> FindHostAccount(TextView name) {
    constexpr std::uint32_t kMilliseconds = 1000;
    static std::map<Text, Answer, std::less<>> answers;
    if (const std::size_t domain = name.rfind('\\'); domain != TextView::npos) name.remove_prefix(domain + 1);
    if (name.empty() || name.find('\0') != TextView::npos) return std::nullopt;
    const std::uint32_t now = TickCount32();
    const auto isOld = [now](const auto& answer) { return now - answer.second.tick >= kMilliseconds; };
    if (const auto known = answers.find(name); known != answers.end() && !isOld(*known))
        return known->second.account;
    std::erase_if(answers, isOld);
    return answers.insert_or_assign(Text(name), Answer{LookUp(name), now}).first->second.account;
}

}  // namespace rvl::platform
