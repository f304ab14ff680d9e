#include <string_view>

#include "platform/identity.h"
#include "platform/win32/network_library.h"
#include "platform/win32/question.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

bool IsDomainMember() {
    NETSETUP_JOIN_STATUS status = NetSetupUnknownStatus;
    const auto name = AskNetworkLibrary<wchar_t>([&](BYTE** buffer) {
        return NetGetJoinInformation(nullptr, reinterpret_cast<wchar_t**>(buffer), &status);
    });
    return name && status == NetSetupDomainName;
}

/// The library writes it like the beginning of a network path.
std::wstring_view WithoutSlashes(std::wstring_view server) {
    return server.starts_with(L"\\\\") ? server.substr(2) : server;
}

Text AskForController() {
    const auto name =
        AskNetworkLibrary<wchar_t>([](BYTE** buffer) { return NetGetDCName(nullptr, nullptr, buffer); });
    return name ? TryNarrow(WithoutSlashes(name.get())).value_or("") : "";
}

}  // namespace

Text LanGroup() {
    const auto information = AskNetworkLibrary<WKSTA_INFO_100>(
        [](BYTE** buffer) { return NetWkstaGetInfo(nullptr, 100, buffer); });
    return information ? TryNarrow(information->wki100_langroup).value_or("") : "";
}

/// Without a domain, the library would call for one in the network and wait for answers. Where none can be
/// reached it looks for one longer than the events of a service may wait.
Text DomainControllerName() {
    constexpr DWORD kPatience = 5000;
    if (!IsDomainMember()) return "";
    return Question<Text>(AskForController).Wait(kPatience).value_or("");
}

}  // namespace rvl::platform
