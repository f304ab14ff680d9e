#include <X11/Xatom.h>

#include "platform/desktop_windows.h"
#include "platform/posix/x_display.h"
#include "platform/posix/x_property.h"
#include "platform/posix/x_window_tree.h"

namespace rvl::platform {
namespace {

constexpr const char* kActiveWindow = "_NET_ACTIVE_WINDOW";

Window FocusWindow(Display* display) {
    Window focus = None;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    return focus == PointerRoot ? None : ProgramWindowOf(display, focus);
}

Window FindForeground(const DisplayUse& use) {
    if (!WindowManagerOffers(use.Get(), kActiveWindow)) return FocusWindow(use.Get());
    return ValueProperty(use.Get(), use.Root(), kActiveWindow, XA_WINDOW);
}

/// The window manager restores it, too.
bool AskWindowManager(const DisplayUse& use, Window window) {
    constexpr long kOnBehalfOfTheUser = 2;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(use.Get(), kActiveWindow, False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = kOnBehalfOfTheUser;
    event.xclient.data.l[1] = CurrentTime;
    return XSendEvent(use.Get(), use.Root(), False, SubstructureRedirectMask | SubstructureNotifyMask,
                      &event) != 0;
}

bool RaiseAndFocus(const DisplayUse& use, Window window) {
    XMapRaised(use.Get(), window);
    XSetInputFocus(use.Get(), window, RevertToPointerRoot, CurrentTime);
    return FindForeground(use) == window;
}

}  // namespace

WindowHandle ForegroundWindow() {
    const DisplayUse use;
    return use ? static_cast<WindowHandle>(FindForeground(use)) : 0;
}

bool BringToForeground(WindowHandle window) {
    if (!IsWindow(window)) return false;
    const DisplayUse use;
    if (!use) return false;
    if (FindForeground(use) == window) return true;
    return WindowManagerOffers(use.Get(), kActiveWindow) ? AskWindowManager(use, window)
                                                         : RaiseAndFocus(use, window);
}

}  // namespace rvl::platform
