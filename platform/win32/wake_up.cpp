#include "platform/event_loop.h"
#include "platform/win32/event_queue.h"

namespace rvl::platform {
namespace {

/// Due now for zero, else so many milliseconds from now, in the system's unit of 100 ns.
FILETIME RelativeTime(std::uint64_t milliseconds) {
    ULARGE_INTEGER time;
    time.QuadPart = 0 - milliseconds * 10'000;
    return {time.LowPart, time.HighPart};
}

}  // namespace

/// The thread pool's timers, which post a message: the window timers of the system come only when nothing
/// else does, so that busy sockets would hold them up.
struct WakeUp::Impl {
    explicit Impl(std::function<void()> handler)
        : m_handler(std::move(handler)),
          m_due([this](WPARAM moment, LPARAM) { OnDue(moment); }),
          m_window(NotificationWindow()),
          m_timer(CreateThreadpoolTimer(OnTimer, this, nullptr)) {}

    ~Impl() {
        if (m_timer == nullptr) return;
        Stop();
        CloseThreadpoolTimer(m_timer);
    }

    bool Start(std::uint64_t milliseconds) {
        if (m_timer == nullptr) return false;
        Stop();
        FILETIME moment = RelativeTime(milliseconds);
        SetThreadpoolTimer(m_timer, &moment, 0, 0);
        return true;
    }

    /// What has come due and not arrived is of an earlier moment from now on.
    void Stop() {
        if (m_timer == nullptr) return;
        SetThreadpoolTimer(m_timer, nullptr, 0, 0);
        WaitForThreadpoolTimerCallbacks(m_timer, TRUE);
        ++m_moment;
    }

 private:
    static void CALLBACK OnTimer(PTP_CALLBACK_INSTANCE, void* context, PTP_TIMER) {
        const Impl& self = *static_cast<Impl*>(context);
        PostMessageW(self.m_window, self.m_due.Message(), self.m_moment, 0);
    }

    void OnDue(WPARAM moment) {
        if (moment != m_moment) return;
        const auto handler = m_handler;  // a copy: it may destroy this
        handler();
    }

    std::function<void()> m_handler;
    Notification m_due;
    HWND m_window;
    WPARAM m_moment = 0;  ///< written only while no callback of the timer can run
    PTP_TIMER m_timer;
};

WakeUp::WakeUp(std::function<void()> handler) : m_impl(std::make_unique<Impl>(std::move(handler))) {}

WakeUp::~WakeUp() = default;

bool WakeUp::After(std::uint64_t milliseconds) {
    return m_impl->Start(milliseconds);
}

void WakeUp::Cancel() {
    m_impl->Stop();
}

}  // namespace rvl::platform
