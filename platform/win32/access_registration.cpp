#include "platform/win32/window_handle.h"

namespace rvl::platform {
namespace {

/// Once it has answered it has done what it was told; one that is busy does it later.
void Tell(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerMilliseconds, &answer);
}

}  // namespace

void AskToRegister(WindowHandle accessWindow) {
    constexpr UINT kRegisterYourself = WM_USER + 18;
    if (IsWindow(accessWindow)) Tell(HwndOf(accessWindow), kRegisterYourself, 0, 0);
}

void PretendActivation(WindowHandle accessWindow) {
    if (!IsWindow(accessWindow)) return;
    HWND window = HwndOf(accessWindow);
    const DWORD accessThread = GetWindowThreadProcessId(window, nullptr);
    Tell(window, WM_ACTIVATEAPP, FALSE, static_cast<LPARAM>(GetCurrentThreadId()));
    Tell(window, WM_ACTIVATEAPP, TRUE, static_cast<LPARAM>(accessThread));
}

}  // namespace rvl::platform
