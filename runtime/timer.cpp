#include "runtime/timer.h"

#include "runtime/timer_queue.h"
#include "util/handle_error.h"

namespace rvl {

CTimer::~CTimer() {
    TimerQueue::Instance().Stop(*this);
}

void CTimer::SetInterval(std::uint32_t milliseconds) {
    m_interval = milliseconds;
    Restart();
}

void CTimer::SetEnabled(bool enabled) {
    m_enabled = enabled;
    Restart();
}

void CTimer::Restart() {
    TimerQueue::Instance().Stop(*this);
    if (m_enabled && m_interval > 0) TimerQueue::Instance().Start(*this, m_interval);
}

void CTimer::Tick() {
    const auto thatTime = m_thatTime;  // a copy: it may destroy the timer
    try {
        thatTime();
    } catch (...) {
        HandleError("CTimer.ThatTime");
    }
}

}  // namespace rvl
