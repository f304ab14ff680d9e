#include "platform/win32/console_closed.h"

#include <windows.h>

#include <future>
#include <memory>
#include <utility>

#include "platform/win32/event_queue.h"

namespace rvl::platform {
namespace {

/// Outlives what the system's thread does while the process ends.
std::function<void()>& Handler() {
    static auto& handler = *new std::function<void()>;
    return handler;
}

/// Runs the handler on the loop and waits for its end. It may end with an exception, or never run since the
/// process ends: that breaks the promise, which ends the wait as well.
void RunOnLoop() {
    auto over = std::make_shared<std::promise<void>>();
    const std::future<void> wait = over->get_future();
    PostEventFromThread([over = std::move(over)] { Handler()(); });
    wait.wait();
}

/// On a thread of its own. Other events are those of who watches the session.
BOOL WINAPI OnConsoleEvent(DWORD event) noexcept {
    if (event != CTRL_CLOSE_EVENT) return FALSE;
    RunOnLoop();
    return TRUE;
}

}  // namespace

void OnConsoleClosed(std::function<void()> handler) {
    Handler() = std::move(handler);
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

}  // namespace rvl::platform
