#include "runtime/unload_mode.h"

#include "util/text_functions.h"

namespace rvl {

Text UnloadModeName(UnloadMode mode) {
    switch (mode) {
        case UnloadMode::Closing:
            return "Closing";
        case UnloadMode::ByCode:
            return "Unloaded";
        case UnloadMode::SessionEnding:
            return "Session Ending";
        case UnloadMode::TaskManager:
            return "Task Manager";
        case UnloadMode::MdiClosing:
            return "MDI Closing";
        case UnloadMode::OwnerClosing:
            return "Owner Closing";
    }
    return "Unknown #" + NumberText(static_cast<int>(mode));
}

bool MayUnload(UnloadMode mode, bool closingForUpdate) {
    return closingForUpdate || mode == UnloadMode::ByCode || mode == UnloadMode::SessionEnding;
}

}  // namespace rvl
