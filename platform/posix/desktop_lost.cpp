#include <memory>
#include <utility>

#include "platform/desktop_windows.h"
#include "platform/posix/event_dispatch.h"
#include "platform/posix/socket_watch.h"
#include "platform/posix/x_display.h"
#include "platform/process.h"

namespace rvl::platform {
namespace {

std::function<void()>& LossHandler() {
    static std::function<void()> handler;
    return handler;
}

/// Of any connection of the process: the toolkit's may break first. Xlib does not allow to go on.
int EndProcess(Display*) {
    const std::function<void()> handler = std::exchange(LossHandler(), nullptr);
    EndNestedLoops();
    if (handler) DispatchEvent(handler);
    ExitProcessNow(0);
}

/// Reads what has come: events nobody asked for, or the end of the connection.
void ReadConnection(GIOCondition) {
    const DisplayUse use;
    if (use) XSync(use.Get(), True);
}

std::unique_ptr<SocketWatch> WatchConnection() {
    const DisplayUse use;
    if (!use) return nullptr;
    return std::make_unique<SocketWatch>(ConnectionNumber(use.Get()), G_IO_IN, ReadConnection);
}

}  // namespace

void OnDesktopLost(std::function<void()> handler) {
    LossHandler() = std::move(handler);
    XSetIOErrorHandler(EndProcess);
    static const std::unique_ptr<SocketWatch> watch = WatchConnection();
}

}  // namespace rvl::platform
