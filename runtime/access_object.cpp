#include "runtime/access_object.h"

#include "runtime/process_state.h"
#include "runtime/tools_interface.h"
#include "runtime/tools_library.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

/// True once a minute: Access windows are asked for every second.
bool IsTimeToLook() {
    constexpr std::int64_t kInterval = 60000;
    static std::optional<std::uint64_t> last;
    if (last && !CheckTickCountEx(*last, kInterval)) return false;
    last = GetTickCountEx();
    return true;
}

/// Null without the library.
TellRunningAccess FindTeller() {
    if (!State().Tools && IsTimeToLook()) LoadTools();
    return State().Tools ? reinterpret_cast<TellRunningAccess>(State().Tools->Symbol(kTellRunningAccess))
                         : nullptr;
}

void TakeValue(void* taker, const char* name, const char* value) {
    auto& access = *static_cast<platform::RunningAccess*>(taker);
    if (TextView(name) == kAccessVersion) access.version = value;
    if (TextView(name) == kAccessBuild) access.build = value;
    if (TextView(name) == kAccessCurrentProject) access.currentProject = value;
}

}  // namespace

std::optional<platform::RunningAccess> GetAccessObjectByHwnd(platform::WindowHandle accessWindow) {
    const TellRunningAccess tell = FindTeller();
    platform::RunningAccess access;
    if (tell == nullptr || tell(accessWindow, TakeValue, &access) == 0) return std::nullopt;
    return access;
}

}  // namespace rvl
