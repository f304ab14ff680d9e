#include "platform/session_end.h"

#include <windows.h>

#include <utility>

#include "platform/win32/event_queue.h"

namespace rvl::platform {
namespace {

std::function<void()> g_handler;

/// The process may be ended as soon as this returns.
LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_QUERYENDSESSION) return TRUE;
    if (message != WM_ENDSESSION) return DefWindowProcW(window, message, wParam, lParam);
    if (wParam != FALSE) DispatchEvent(g_handler);
    return 0;
}

/// Only top-level windows hear of it; this one is never shown.
void CreateListener() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = OnMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"RVLSessionEnd";
    RegisterClassExW(&windowClass);
    CreateWindowExW(WS_EX_TOOLWINDOW, windowClass.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                    windowClass.hInstance, nullptr);
}

/// What a console sends, on a thread of its own: Ctrl+C and Ctrl+Break, or its own end or that of the
/// session. With these the system ends the process as soon as this returns, and some seconds later in any
/// case.
BOOL WINAPI OnConsoleEvent(DWORD event) noexcept {
    PostEventFromThread([] { g_handler(); });
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
    return TRUE;
}

}  // namespace

void OnSessionEnd(std::function<void()> handler) {
    g_handler = std::move(handler);
    NotificationWindow();
    CreateListener();
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

}  // namespace rvl::platform
