#pragma once

#include <windows.h>

#include <functional>

namespace rvl::platform {

/// The hidden window of the event loop's thread, to which sockets, lookups and timers report. The first use
/// of the loop makes it.
HWND NotificationWindow();

/// As PostEvent, from any thread. What is posted when no loop runs waits for the next one.
void PostEventFromThread(std::function<void()> handler);

/// Runs an event handler at the edge to the system's code: what it throws ends in the event error handler.
void DispatchEvent(const std::function<void()>& handler) noexcept;

/// A message number of the notification window, with its handler. Numbers are used in turn, so that what is
/// still on its way to one that is gone does not reach its successor.
class Notification {
 public:
    using Handler = std::function<void(WPARAM, LPARAM)>;

    explicit Notification(Handler handler);
    ~Notification();
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;

    UINT Message() const { return m_message; }

 private:
    UINT m_message;
};

}  // namespace rvl::platform
