#include "runtime/system_information.h"

#include "platform/identity.h"
#include "platform/process.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr std::uint32_t kNtFamily = 2;

platform::SystemVersion SystemVersion() {
    platform::SystemVersion version;
    if (!platform::QuerySystemVersion(version))
        throw Error(kApplicationErrorBase + 1, "Util.IsWinNT", "GetVersionEx failed");
    return version;
}

}  // namespace

Text FullUsername() try {
    if (Text name = platform::FullUserNameSam(); !name.empty()) return StripTerminator(name);
    if (Text name = platform::WorkstationUserName(); !name.empty()) return name;
    return platform::UserName();
} catch (...) {
    HandleError("Util.FullUsername");
    return "";
}

Text DomainName() try { return platform::LanGroup(); } catch (...) {
    HandleError("Util.DomainName");
    return "";
}

Text ComputerName() try { return platform::ComputerName(); } catch (...) {
    HandleError("Util.ComputerName");
    return "";
}

Text PrimaryDomainController() try { return platform::DomainControllerName(); } catch (...) {
    HandleErrorAndReRaise("Util.PrimaryDomainController");
}

bool IsWinNT() {
    static const bool isNt = SystemVersion().platformId == kNtFamily;
    return isNt;
}

Text OSVersionString() try {
    const platform::SystemVersion version = SystemVersion();
    const bool isNt = version.platformId == kNtFamily;
    const std::uint32_t build = isNt ? version.build : version.build & 0xFFFF;
    return Text("Windows ") + (isNt ? "NT " : "") + NumberText(version.major) + "." +
           NumberText(version.minor) + " (Build " + NumberText(build) + ") " + version.servicePack;
} catch (...) {
    HandleError("Util.OSVersionString");
    return "";
}

Text Self() {
    static const Text path = platform::ExecutablePath();
    return path;
}

Text AppPath() {
    return BackOneDir(Self());
}

}  // namespace rvl
