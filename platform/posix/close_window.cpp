#include <X11/Xutil.h>
#include <sys/types.h>

#include <algorithm>
#include <csignal>
#include <memory>

#include "platform/desktop_windows.h"
#include "platform/posix/x_display.h"
#include "platform/posix/x_property.h"

namespace rvl::platform {
namespace {

bool TakesPart(Display* display, Window window, Atom protocol) {
    Atom* protocols = nullptr;
    int count = 0;
    if (XGetWMProtocols(display, window, &protocols, &count) == 0) return false;
    const std::unique_ptr<Atom, XFreeDeleter> owned(protocols);
    return std::find(protocols, protocols + count, protocol) != protocols + count;
}

/// Any number may stand in the property; 0, 1 and those that are no process would mean many of them.
void SendSignal(WindowHandle window, int signal) {
    const auto process = static_cast<pid_t>(WindowProcessId(window));
    if (process > 1) kill(process, signal);
}

}  // namespace

void RequestClose(WindowHandle window) {
    const DisplayUse use;
    if (!use) return;
    const Atom closing = XInternAtom(use.Get(), "WM_DELETE_WINDOW", False);
    if (!TakesPart(use.Get(), window, closing)) return;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(use.Get(), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(closing);
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(use.Get(), window, False, NoEventMask, &event);
}

void PostQuit(WindowHandle window) {
    SendSignal(window, SIGTERM);
}

void TerminateProcessOf(WindowHandle window) {
    SendSignal(window, SIGKILL);
}

}  // namespace rvl::platform
