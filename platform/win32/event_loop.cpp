#include "platform/event_loop.h"

#include "platform/win32/event_queue.h"

namespace rvl::platform {
namespace {

struct Loop {
    bool quit = false;
};

Loop*& RunningLoop() {
    static Loop* loop = nullptr;
    return loop;
}

void Dispatch(const MSG& message) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

/// True once a message is there; it stays in the queue.
bool AwaitMessage(std::uint32_t milliseconds) {
    return MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE) !=
           WAIT_TIMEOUT;
}

/// The system hands these out only when nothing is posted, and so never before a mark that is: who waits for
/// events over and over would find one there and never rest.
void DispatchOneOfInputAndPainting() {
    MSG message;
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT | PM_QS_PAINT)) Dispatch(message);
}

}  // namespace

void RunEventLoop() {
    NotificationWindow();
    Loop loop;
    Loop* const outer = RunningLoop();
    RunningLoop() = &loop;
    MSG message;
    while (!loop.quit && GetMessageW(&message, nullptr, 0, 0) > 0)
        Dispatch(message);
    RunningLoop() = outer;
    // Somebody ended the thread's loops from outside.
    if (!loop.quit && outer != nullptr) PostQuitMessage(0);
}

void QuitEventLoop() {
    if (RunningLoop() == nullptr) return;
    RunningLoop()->quit = true;
    PostMessageW(NotificationWindow(), WM_NULL, 0, 0);
}

void ProcessPendingEvents() {
    bool reached = false;  // what comes behind this mark came later
    const Notification mark([&](WPARAM, LPARAM) { reached = true; });
    PostMessageW(NotificationWindow(), mark.Message(), 0, 0);
    MSG message;
    while (!reached && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
        Dispatch(message);
    }
    DispatchOneOfInputAndPainting();
}

void WaitForEvents(std::uint32_t milliseconds) {
    NotificationWindow();
    if (AwaitMessage(milliseconds)) ProcessPendingEvents();
}

}  // namespace rvl::platform
