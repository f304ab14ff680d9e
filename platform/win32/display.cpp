#include <windows.h>

#include "platform/process.h"

namespace rvl::platform {
namespace {

/// Services live where no user can see their windows.
bool IsStationVisible() {
    USEROBJECTFLAGS flags{};
    return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) &&
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

/// There may be no driver for a screen, or no room for another window.
bool CanMakeWindow() {
    const HWND window =
        CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    return window != nullptr && DestroyWindow(window);
}

}  // namespace

bool HasDisplay() {
    return IsStationVisible() && CanMakeWindow();
}

}  // namespace rvl::platform
