#include "platform/win32/window_handle.h"

namespace rvl::platform {
namespace {

bool Answers(HWND window) {
    constexpr UINT kMilliseconds = 200;
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kMilliseconds, &answer) != 0;
}

/// Makes this thread one with the thread whose window has the keyboard: only that one may always pass it on.
/// One that hangs would take this thread with it.
class SharedInput {
 public:
    explicit SharedInput(HWND foreground) : m_other(GetWindowThreadProcessId(foreground, nullptr)) {
        const bool possible = m_other != 0 && m_other != GetCurrentThreadId() && Answers(foreground);
        if (!possible || !AttachThreadInput(GetCurrentThreadId(), m_other, TRUE)) m_other = 0;
    }
    ~SharedInput() {
        if (m_other != 0) AttachThreadInput(GetCurrentThreadId(), m_other, FALSE);
    }
    SharedInput(const SharedInput&) = delete;
    SharedInput& operator=(const SharedInput&) = delete;

 private:
    DWORD m_other;
};

bool GiveKeyboard(HWND window, HWND foreground) {
    const SharedInput shared(foreground);  // first: a refused request makes the taskbar flash
    return SetForegroundWindow(window) || GetForegroundWindow() == window;
}

}  // namespace

WindowHandle ForegroundWindow() {
    return HandleOf(GetForegroundWindow());
}

bool BringToForeground(WindowHandle handle) {
    HWND window = HwndOf(handle);
    if (!IsWindow(handle)) return false;
    HWND foreground = GetForegroundWindow();
    if (foreground == window && !IsIconic(window)) return true;
    const bool done = GiveKeyboard(window, foreground);
    ShowWindowAsync(window, IsIconic(window) ? SW_RESTORE : SW_SHOW);
    constexpr UINT kOnlyRaise = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS;
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, kOnlyRaise);
    return done;
}

}  // namespace rvl::platform
