#include "platform/identity.h"

#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cctype>
#include <cstdlib>
#include <string>

namespace rvl::platform {
namespace {

/// The value of an environment variable as a text, the fallback when it is missing or empty; empty when it is
/// no text.
Text EnvironmentText(const char* name, const char* fallback) {
    const char* value = std::getenv(name);
    try {
        return TextFromUtf8(value != nullptr && *value != '\0' ? value : fallback);
    } catch (...) {
        return "";
    }
}

std::string LookUpLoginName() {
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    const bool known =
        getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
    return known ? entry.pw_name : std::to_string(geteuid());
}

/// It does not change while the process runs, and looking it up reads files.
const std::string& LoginName() {
    static const std::string name = LookUpLoginName();
    return name;
}

/// The number at `position` of a kernel release such as "6.1.0-18-amd64".
std::uint32_t ReleaseNumber(const std::string& release, int position) {
    std::size_t start = 0;
    for (int skipped = 0; skipped < position; ++skipped) {
        start = release.find('.', start);
        if (start == std::string::npos) return 0;
        ++start;
    }
    return static_cast<std::uint32_t>(std::strtoul(release.c_str() + start, nullptr, 10));
}

}  // namespace

Text UserName() {
    return EnvironmentText("RVL_USER", LoginName().c_str());
}

Text LanGroup() {
    return EnvironmentText("RVL_DOMAIN", "WORKGROUP");
}

/// The first part of the account's comment, where hosts keep the name of the person.
Text AccountFullName() {
    const passwd* account = getpwnam(Utf8FromText(UserName()).c_str());
    if (account == nullptr || account->pw_gecos == nullptr) return "";
    try {
        const std::string comment = account->pw_gecos;
        return TextFromUtf8(comment.substr(0, comment.find(',')));
    } catch (...) {
        return "";
    }
}

Text FullUserNameSam() {
    return LanGroup() + "\\" + UserName();
}

Text WorkstationUserName() {
    return FullUserNameSam();
}

Text DomainControllerName() {
    return EnvironmentText("RVL_DOMAIN_CONTROLLER", "");
}

Text ComputerName() {
    std::array<char, 256> name{};
    if (gethostname(name.data(), name.size() - 1) != 0) return "";
    Text upper = name.data();
    for (char& character : upper)
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return upper;
}

bool QuerySystemVersion(SystemVersion& version) {
    constexpr std::uint32_t kNtFamily = 2;
    utsname name{};
    if (uname(&name) != 0) return false;
    const std::string release = name.release;
    version = {kNtFamily, ReleaseNumber(release, 0), ReleaseNumber(release, 1), ReleaseNumber(release, 2),
               Text(name.sysname) + " " + release};
    return true;
}

}  // namespace rvl::platform
