#include "session/access_windows.h"

#include <algorithm>

#include "util/text_functions.h"

namespace rvl {

std::vector<WindowHandle> AccessMainWindows(const Desktop& desktop,
                                            const std::vector<WindowHandle>& topLevelWindows) {
    std::vector<WindowHandle> found;
    std::ranges::copy_if(topLevelWindows, std::back_inserter(found),
                         [&](WindowHandle window) { return desktop.HasClass(window, kAccessWindowClass); });
    return found;
}

std::optional<OpenAccess> FindOpenAccessObjectByDBFilename(const Desktop& desktop, TextView databasePath) {
    for (const WindowHandle window : AccessMainWindows(desktop, desktop.TopLevelWindows())) {
        auto object = desktop.AccessObject(window);
        if (object && object->currentProject && EqualsNoCase(*object->currentProject, databasePath))
            return OpenAccess{window, std::move(*object)};
    }
    return std::nullopt;
}

Text HandleText(WindowHandle window) {
    return NumberText(static_cast<std::int32_t>(window));
}

}  // namespace rvl
