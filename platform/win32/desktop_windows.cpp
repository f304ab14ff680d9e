#include "platform/desktop_windows.h"

#include <array>

#include "platform/win32/readable_text.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handle.h"

namespace rvl::platform {
namespace {

BOOL CALLBACK Append(HWND window, LPARAM list) noexcept {
    reinterpret_cast<std::vector<WindowHandle>*>(list)->push_back(HandleOf(window));
    return TRUE;
}

bool IsInside(HWND window) {
    return (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0;
}

using Caption = std::array<wchar_t, 4096>;

/// A control may keep its text to itself; nobody waits long for it.
std::wstring_view AskForText(HWND window, Caption& caption) {
    constexpr UINT kMilliseconds = 200;
    DWORD_PTR length = 0;
    if (SendMessageTimeoutW(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()),
                            SMTO_ABORTIFHUNG | SMTO_BLOCK, kMilliseconds, &length) == 0)
        return {};
    return std::wstring_view(caption.data(), caption.size()).substr(0, length);
}

}  // namespace

std::vector<WindowHandle> TopLevelWindows() {
    std::vector<WindowHandle> windows;
    EnumWindows(Append, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::vector<WindowHandle> ChildWindows(WindowHandle window) {
    std::vector<WindowHandle> windows;
    if (IsWindow(window))  // without one the system takes the desktop
        EnumChildWindows(HwndOf(window), Append, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

bool IsWindow(WindowHandle window) {
    return ::IsWindow(HwndOf(window)) != FALSE;
}

bool HasWindowClass(WindowHandle window, TextView windowClass) {
    std::array<wchar_t, 257> name;
    const int length = GetClassNameW(HwndOf(window), name.data(), static_cast<int>(name.size()));
    return length > 0 &&
           std::wstring_view(name.data(), static_cast<std::size_t>(length)) == Wide(windowClass);
}

/// What the system itself keeps of the text can be had from a window that hangs, too.
Text WindowText(WindowHandle window) {
    HWND hwnd = HwndOf(window);
    Caption caption;
    const int length = InternalGetWindowText(hwnd, caption.data(), static_cast<int>(caption.size()));
    if (length > 0) return ReadableText({caption.data(), static_cast<std::size_t>(length)});
    return IsInside(hwnd) ? ReadableText(AskForText(hwnd, caption)) : Text();
}

std::uint32_t WindowProcessId(WindowHandle window) {
    DWORD process = 0;
    GetWindowThreadProcessId(HwndOf(window), &process);
    return process;
}

std::uint32_t WindowProperty(WindowHandle window, const char* name) {
    return static_cast<std::uint32_t>(HandleToULong(GetPropW(HwndOf(window), Wide(name).c_str())));
}

void SetWindowProperty(WindowHandle window, const char* name, std::uint32_t value) {
    SetPropW(HwndOf(window), Wide(name).c_str(), ULongToHandle(value));
}

/// The system tells of the end of the session (session_end.h); before that no desktop goes away.
void OnDesktopLost(std::function<void()>) {}  // NOLINT(performance-unnecessary-value-param): others keep it

}  // namespace rvl::platform
