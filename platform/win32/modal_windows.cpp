#include "platform/modal_windows.h"

#include <windows.h>

#include <commctrl.h>

namespace rvl::platform {
namespace {

/// A modal dialog disables the other windows of its process; this one is back at once.
LRESULT CALLBACK StayEnabled(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                             DWORD_PTR) {
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_ENABLE && wParam == FALSE) EnableWindow(window, TRUE);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, StayEnabled, id);
    return result;
}

}  // namespace

/// What it does not do is to spare the other windows while it is modal itself: that is what a user of this
/// system expects of a modal dialog.
void SeparateFromModalWindows(void* window) {
    constexpr UINT_PTR kId = 1;
    if (window != nullptr) SetWindowSubclass(static_cast<HWND>(window), StayEnabled, kId, 0);
}

}  // namespace rvl::platform
