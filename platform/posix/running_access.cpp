#include "platform/running_access.h"

#include "platform/posix/x_display.h"
#include "platform/posix/x_property.h"

namespace rvl::platform {

std::optional<RunningAccess> FindRunningAccess(WindowHandle accessWindow) {
    const DisplayUse use;
    if (!use) return std::nullopt;
    const auto told = [&](const char* name) { return TextProperty(use.Get(), accessWindow, name); };
    const std::optional<Text> version = told("ACCESS_VERSION");
    if (!version) return std::nullopt;
    return RunningAccess{*version, told("ACCESS_BUILD").value_or(""), told("ACCESS_CURRENT_PROJECT")};
}

}  // namespace rvl::platform
