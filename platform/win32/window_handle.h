#pragma once

#include <windows.h>

#include "platform/desktop_windows.h"

namespace rvl::platform {

/// The system's handle of a window; those fit into 32 bits and are sign-extended.
inline HWND HwndOf(WindowHandle window) {
    return static_cast<HWND>(LongToHandle(static_cast<LONG>(window)));
}

inline WindowHandle HandleOf(HWND window) {
    return static_cast<WindowHandle>(HandleToULong(window));
}

/// How long another program may take to answer a message.
inline constexpr UINT kAnswerMilliseconds = 2000;

}  // namespace rvl::platform
