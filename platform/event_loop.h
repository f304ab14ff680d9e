#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace rvl::platform {

/// The thread's one event loop. Socket readiness, name lookups, posted events, the timer wake-up and the
/// stop control all arrive here, each handler running to completion. It nests: a modal dialog or
/// ProcessPendingEvents inside a handler serves every source except the socket that is being handled.
///
/// An exception that leaves a handler ends in the handler set by SetEventErrorHandler (called inside a
/// catch block, so that it can rethrow to look at it); the loop goes on.

void RunEventLoop();
void QuitEventLoop();

/// Lets the events that are pending now run once; returns at once when there are none.
void ProcessPendingEvents();

/// As ProcessPendingEvents, but waits up to `milliseconds` for the first event.
void WaitForEvents(std::uint32_t milliseconds);

/// Runs `handler` later from the loop, in the order of posting.
void PostEvent(std::function<void()> handler);

void SetEventErrorHandler(std::function<void()> handler);

/// Wakes the loop once at a moment; the timer queue stands on it.
class WakeUp {
 public:
    explicit WakeUp(std::function<void()> handler);
    ~WakeUp();
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;

    bool After(std::uint64_t milliseconds);  ///< replaces an earlier moment; false: the system has no timer
    void Cancel();

 private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace rvl::platform
