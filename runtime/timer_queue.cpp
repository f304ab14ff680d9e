#include "runtime/timer_queue.h"

#include "platform/error.h"
#include "runtime/timer.h"
#include "util/tick_count.h"

namespace rvl {

TimerQueue& TimerQueue::Instance() {
    static TimerQueue queue;
    return queue;
}

TimerQueue::TimerQueue() : m_wakeUp([this] { RunDueTimers(); }) {}

void TimerQueue::Insert(CTimer& timer, std::uint64_t deadline) {
    m_waiting.emplace(Key{deadline, ++m_starts}, &timer);
}

void TimerQueue::Start(CTimer& timer, std::uint32_t intervalMs) {
    Insert(timer, GetTickCountEx() + intervalMs);
    Arm();
}

void TimerQueue::Stop(CTimer& timer) {
    const auto isThis = [&timer](const auto& entry) { return entry.second == &timer; };
    std::erase_if(m_due, isThis);
    if (std::erase_if(m_waiting, isThis) > 0) Arm();
}

void TimerQueue::TakeDue(std::uint64_t now) {
    while (!m_waiting.empty() && m_waiting.begin()->first.first <= now)
        m_due.insert(m_waiting.extract(m_waiting.begin()));
}

void TimerQueue::RunDueTimers() {
    const std::uint64_t now = GetTickCountEx();
    TakeDue(now);
    while (!m_due.empty()) {
        const auto entry = m_due.extract(m_due.begin());
        CTimer& timer = *entry.mapped();
        const std::uint64_t next = entry.key().first + timer.Interval();
        Insert(timer, next > now ? next : now + timer.Interval());  // missed intervals are not made up for
        Arm();  // the handler may let events run: the other timers go on meanwhile
        timer.Tick();
    }
    Arm();
}

std::optional<std::uint64_t> TimerQueue::NextDeadline() const {
    if (m_waiting.empty()) return std::nullopt;
    return m_waiting.begin()->first.first;
}

void TimerQueue::Arm() {
    const auto deadline = m_due.empty() ? NextDeadline() : std::optional<std::uint64_t>(0);
    if (!deadline) return m_wakeUp.Cancel();
    const std::uint64_t now = GetTickCountEx();
    constexpr std::int32_t kNoTimers = kApplicationErrorBase + 31013;
    if (!m_wakeUp.After(*deadline > now ? *deadline - now : 0))
        throw Error(kNoTimers, "CTimer", "No timers available");
}

}  // namespace rvl
