#include "platform/win32/event_queue.h"

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/error.h"
#include "platform/event_loop.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

constexpr UINT kPosted = WM_APP;
constexpr UINT kFirstNotification = WM_APP + 1, kLastNotification = 0xBFFF;

std::function<void()>& ErrorHandler() {
    static std::function<void()> handler;
    return handler;
}

/// What was posted and has not run. One message at a time stands for all of it: the system's queue is
/// bounded.
struct PostedEvents {
    std::mutex mutex;
    std::deque<std::function<void()>> events;
    HWND window = nullptr;  ///< none yet: it is told of what waits once it is there

    static PostedEvents& Instance() {
        static auto& posted = *new PostedEvents;  // outlives what other threads do while the process ends
        return posted;
    }

    void Add(std::function<void()> event) {
        const std::lock_guard lock(mutex);
        events.push_back(std::move(event));
        if (events.size() == 1) Tell();
    }

    /// The message for the next event goes out before this one runs: it may let events run itself.
    std::function<void()> Take() {
        const std::lock_guard lock(mutex);
        if (events.empty()) return nullptr;
        std::function<void()> event = std::move(events.front());
        events.pop_front();
        if (!events.empty()) Tell();
        return event;
    }

    void Receive(HWND receiver) {
        const std::lock_guard lock(mutex);
        window = receiver;
        if (!events.empty()) Tell();
    }

    void Tell() const {
        if (window != nullptr) PostMessageW(window, kPosted, 0, 0);
    }
};

/// Handlers by message number; shared, so that one may take itself out while it runs.
std::map<UINT, std::shared_ptr<Notification::Handler>>& Handlers() {
    static auto& handlers = *new std::map<UINT, std::shared_ptr<Notification::Handler>>;
    return handlers;  // static objects may still hold a number when others have gone
}

UINT NextFreeMessage() {
    static UINT next = kFirstNotification;
    while (Handlers().contains(next))
        next = next == kLastNotification ? kFirstNotification : next + 1;
    return std::exchange(next, next == kLastNotification ? kFirstNotification : next + 1);
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kPosted) {
        if (const auto event = PostedEvents::Instance().Take()) DispatchEvent(event);
        return 0;
    }
    const auto found = Handlers().find(message);
    if (found == Handlers().end()) return DefWindowProcW(window, message, wParam, lParam);
    const auto handler = found->second;
    DispatchEvent([&] { (*handler)(wParam, lParam); });
    return 0;
}

HWND CreateNotificationWindow() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = OnMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"RVLNotification";
    RegisterClassExW(&windowClass);
    HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  windowClass.hInstance, nullptr);
    if (window == nullptr) throw Error(LastError(), "EventLoop", "Failed to create MessageWindow");
    PostedEvents::Instance().Receive(window);
    return window;
}

}  // namespace

HWND NotificationWindow() {
    static const HWND window = CreateNotificationWindow();
    return window;
}

void PostEventFromThread(std::function<void()> handler) {
    PostedEvents::Instance().Add(std::move(handler));
}

void PostEvent(std::function<void()> handler) {
    NotificationWindow();
    PostEventFromThread(std::move(handler));
}

void DispatchEvent(const std::function<void()>& handler) noexcept {
    try {
        handler();
    } catch (...) {
        if (ErrorHandler()) ErrorHandler()();
    }
}

void SetEventErrorHandler(std::function<void()> handler) {
    ErrorHandler() = std::move(handler);
}

Notification::Notification(Handler handler) : m_message(NextFreeMessage()) {
    NotificationWindow();
    Handlers().emplace(m_message, std::make_shared<Handler>(std::move(handler)));
}

Notification::~Notification() {
    Handlers().erase(m_message);
}

}  // namespace rvl::platform
