#include "platform/win32/unique_handle.h"
#include "platform/win32/window_handle.h"

namespace rvl::platform {
namespace {

/// The system takes a message to no window for one to this thread.
void Post(WindowHandle window, UINT message, WPARAM wParam = 0) {
    if (IsWindow(window)) PostMessageW(HwndOf(window), message, wParam, 0);
}

}  // namespace

/// A dialog need not have the menu that the close button stands for.
void RequestClose(WindowHandle window) {
    if (HasWindowClass(window, "#32770"))
        Post(window, WM_CLOSE);
    else
        Post(window, WM_SYSCOMMAND, SC_CLOSE);
}

void PostQuit(WindowHandle window) {
    Post(window, WM_QUIT);
}

void TerminateProcessOf(WindowHandle window) {
    constexpr auto kExitCode = static_cast<UINT>(-1);
    const DWORD processId = WindowProcessId(window);
    const UniqueHandle process(processId != 0 ? OpenProcess(PROCESS_TERMINATE, FALSE, processId) : nullptr);
    if (process) TerminateProcess(process.get(), kExitCode);
}

}  // namespace rvl::platform
