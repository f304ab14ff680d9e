#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace rvl {

/// A timer on the process's event loop: ThatTime runs each time the interval elapses while it is enabled.
/// Setting either property starts the interval anew. ThatTime may stop or destroy the
/// timer; it is never entered again while it runs.
class CTimer {
 public:
    explicit CTimer(std::function<void()> thatTime) : m_thatTime(std::move(thatTime)) {}
    ~CTimer();
    CTimer(const CTimer&) = delete;
    CTimer& operator=(const CTimer&) = delete;

    void SetInterval(std::uint32_t milliseconds);
    void SetEnabled(bool enabled);
    std::uint32_t Interval() const { return m_interval; }
    bool Enabled() const { return m_enabled; }

 private:
    friend class TimerQueue;
    void Restart();
    void Tick();

    std::function<void()> m_thatTime;
    std::uint32_t m_interval = 0;
    bool m_enabled = false;
    std::shared_ptr<bool> m_running = std::make_shared<bool>(false);  ///< ThatTime has not returned yet
};

}  // namespace rvl
