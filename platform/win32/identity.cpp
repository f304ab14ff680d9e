#include "platform/identity.h"

#include <windows.h>

#define SECURITY_WIN32
#include <security.h>

#include <array>

#include "platform/win32/network_library.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

/// What is no text counts as a query that failed.
Text TextOrEmpty(const wchar_t* wide) {
    return wide != nullptr ? TryNarrow(wide).value_or("") : "";
}

Text NameOfUser(EXTENDED_NAME_FORMAT format) {
    std::array<wchar_t, 1024> name{};
    auto size = static_cast<ULONG>(name.size());
    return GetUserNameExW(format, name.data(), &size) ? TextOrEmpty(name.data()) : "";
}

bool IsLocalAccount() {
    return FullUserNameSam() == ComputerName() + "\\" + UserName();
}

Text FullNameOfLocalUser(const Text& user) {
    const auto information = AskNetworkLibrary<USER_INFO_10>(
        [&](BYTE** buffer) { return NetUserGetInfo(nullptr, Wide(user).c_str(), 10, buffer); });
    return information ? TextOrEmpty(information->usri10_full_name) : "";
}

}  // namespace

Text UserName() {
    std::array<wchar_t, 257> name{};
    auto size = static_cast<DWORD>(name.size());
    return GetUserNameW(name.data(), &size) ? TextOrEmpty(name.data()) : "";
}

/// Asked once: every new connection tells it, and a domain that cannot be reached takes its time to say so.
/// The directory of the domain does not know the workstation's own accounts.
Text AccountFullName() {
    static const Text name = [] {
        const Text display = NameOfUser(NameDisplay);
        return display.empty() && IsLocalAccount() ? FullNameOfLocalUser(UserName()) : display;
    }();
    return name;
}

Text FullUserNameSam() {
    return NameOfUser(NameSamCompatible);
}

Text WorkstationUserName() {
    const auto information = AskNetworkLibrary<WKSTA_USER_INFO_1>(
        [](BYTE** buffer) { return NetWkstaUserGetInfo(nullptr, 1, buffer); });
    if (!information) return "";
    const Text domain = TextOrEmpty(information->wkui1_logon_domain);
    const Text user = TextOrEmpty(information->wkui1_username);
    return domain.empty() ? user : domain + "\\" + user;
}

Text ComputerName() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
    auto size = static_cast<DWORD>(name.size());
    return GetComputerNameW(name.data(), &size) ? TextOrEmpty(name.data()) : "";
}

}  // namespace rvl::platform
