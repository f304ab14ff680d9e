#include "session/administrator_message.h"

#include <algorithm>

#include "util/handle_error.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr std::int64_t kMsPerSecond = 1000;
constexpr std::int64_t kRoundingMs = 500;  ///< so that the first second shown is the one ordered
constexpr std::int64_t kBlinkSeconds = 30;
constexpr std::int64_t kBlinkPeriodMs = 500;
constexpr std::uint32_t kCountDownIntervalMs = 500;
constexpr std::uint32_t kLookIntervalMs = 250;
constexpr int kLooks = 10;
constexpr std::uint32_t kStageWaitMs = 500;

std::int64_t Now() {
    return static_cast<std::int64_t>(GetTickCountEx());
}

}  // namespace

AdministratorMessage::AdministratorMessage(Desktop& desktop, AdministratorMessageView& view)
    : m_desktop(desktop),
      m_view(view),
      m_countDown([this] { CountDown(); }),
      m_closingStep([this] { GoOnClosing(); }) {
    m_countDown.SetInterval(kCountDownIntervalMs);
}

void AdministratorMessage::ShowDialog(const AdministratorMessageOrder& order) try {
    Remember(order);
    if (!IsThere()) return Unload();
    m_view.SetCaption("Urgent Administrator Message");
    m_countDown.SetEnabled(true);
    CountDown();
    if (!m_countDown.Enabled()) return;
    m_view.SetMessage(order.message);
    if (order.noContinue) {
        m_view.DisableContinueButton();
        m_view.DisableCloseButton();
    }
    if (order.seconds >= 1) m_view.ShowOnTopWithoutFocus();
} catch (...) {
    HandleError("frmClientTerminateFrontend.ShowDialog");
}

void AdministratorMessage::Remember(const AdministratorMessageOrder& order) {
    const std::int64_t seconds = std::max(order.seconds, 0);
    const std::int64_t now = Now();
    m_accessWindow = order.accessWindow;
    m_title = order.title;
    m_deadline = now + seconds * kMsPerSecond + kRoundingMs;
    m_blinkStart = now + (seconds - kBlinkSeconds) * kMsPerSecond;
}

/// The number of a window may go to another one after it has closed, even of another program.
bool AdministratorMessage::IsThere() const {
    return m_desktop.HasClass(m_accessWindow, kAccessWindowClass);
}

// Countdown

void AdministratorMessage::CountDown() try {
    if (!IsThere()) return Unload();
    const std::int64_t now = Now();
    const std::int32_t remaining = RemainingSeconds(now);
    const bool hidden = remaining > 0 && IsBlinkedOff(now);
    m_view.SetCaption(hidden ? m_title : m_title + " [" + MMSS(remaining) + "]");
    if (remaining < 1) CloseNow();
} catch (...) {
    HandleError("frmClientTerminateFrontend.tmrCountDown_Timer");
}

std::int32_t AdministratorMessage::RemainingSeconds(std::int64_t now) const {
    return static_cast<std::int32_t>(std::max<std::int64_t>(m_deadline - now, 0) / kMsPerSecond);
}

bool AdministratorMessage::IsBlinkedOff(std::int64_t now) const {
    return now > m_blinkStart && (now - m_blinkStart) / kBlinkPeriodMs % 2 != 0;
}

// Closing

void AdministratorMessage::CloseNow() try {
    if (m_closing != Closing::No) return;
    m_view.DisableCloseNowButton();
    m_view.DisableContinueButton();
    m_view.DisableCloseButton();
    m_desktop.RequestClose(m_accessWindow);
    m_closing = Closing::Asked;
    m_looks = 0;
    m_closingStep.SetInterval(kLookIntervalMs);
    m_closingStep.SetEnabled(true);
} catch (...) {
    HandleError("frmClientTerminateFrontend.CloseNow");
}

/// Each step is taken only while the window is still there.
void AdministratorMessage::GoOnClosing() try {
    if (!IsThere() || m_closing == Closing::Terminated) return EndClosing();
    if (m_closing == Closing::Asked && ++m_looks < kLooks) return;
    if (m_closing == Closing::Asked) {
        m_desktop.PostQuit(m_accessWindow);
        return GiveTime(Closing::ToldToQuit);
    }
    m_desktop.TerminateProcessOf(m_accessWindow);
    GiveTime(Closing::Terminated);
} catch (...) {
    HandleError("frmClientTerminateFrontend.CloseNow");
}

void AdministratorMessage::GiveTime(Closing stage) {
    m_closing = stage;
    m_closingStep.SetInterval(kStageWaitMs);
}

/// The next tick of the countdown finds the window gone, or, when its time is up, begins once more.
void AdministratorMessage::EndClosing() {
    m_closingStep.SetEnabled(false);
    m_closing = Closing::No;
}

void AdministratorMessage::ContinueWorking() {
    Unload();
}

void AdministratorMessage::Unload() {
    m_countDown.SetEnabled(false);
    EndClosing();
    m_view.Unload();
}

}  // namespace rvl
