#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "platform/event_loop.h"

namespace rvl {

class CTimer;

/// All timers of the process, ordered by deadline and then by start, over the event loop's one wake-up.
/// Tests move the tick count and call RunDueTimers.
class TimerQueue {
 public:
    static TimerQueue& Instance();

    void Start(CTimer& timer, std::uint32_t intervalMs);
    void Stop(CTimer& timer);

    /// Ticks every timer whose deadline has come, in order. Due timers leave the queue first, so that one
    /// that is started again by a handler waits for the next call and starves nobody.
    void RunDueTimers();

    /// Tick count of the next deadline.
    std::optional<std::uint64_t> NextDeadline() const;

 private:
    using Key = std::pair<std::uint64_t, std::uint64_t>;  ///< deadline, order of start

    TimerQueue();
    void Insert(CTimer& timer, std::uint64_t deadline);
    void Arm();
    void TakeDue(std::uint64_t now);

    std::map<Key, CTimer*> m_waiting;
    std::map<Key, CTimer*> m_due;  ///< taken out to be ticked
    std::uint64_t m_starts = 0;
    platform::WakeUp m_wakeUp;
};

}  // namespace rvl
