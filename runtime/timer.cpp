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
    if (*m_running) return;            // its handler lets events run: it is not entered again meanwhile
    const auto thatTime = m_thatTime;  // copies: it may destroy the timer
    const auto running = m_running;
    *running = true;
    try {
        thatTime();
    } catch (...) {
        *running = false;
        HandleError("CTimer.ThatTime");
    }
    *running = false;
}

}  // namespace rvl
