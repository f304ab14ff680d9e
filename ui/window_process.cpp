#include "ui/window_process.h"

#include "platform/desktop_windows.h"
#include "platform/process.h"
#include "platform/session_end.h"
#include "ui/forms.h"
#include "ui/toolkit.h"

namespace rvl {

bool StartWindowProcess(const Text& window) {
    if (platform::HasDisplay() && StartToolkit()) return true;
    platform::WriteStandardError("The " + window + " needs a display");
    return false;
}

int RunWindowProcess(const std::function<void()>& displayLost) {
    platform::OnSessionEnd([] { UnloadMainWindows(UnloadMode::SessionEnding); });
    platform::OnDesktopLost(displayLost);
    const int exitCode = RunWindows();
    platform::OnDesktopLost(nullptr);  // what it would reach is about to go
    return exitCode;
}

}  // namespace rvl
