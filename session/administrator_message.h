#pragma once

#include "runtime/timer.h"
#include "session/administrator_message_view.h"
#include "session/desktop.h"
#include "session/helper_windows.h"

namespace rvl {

/// An administrator's message about a running front end: it counts down and then closes the front end's
/// Access window, with force if it must. Several of them may be under way at once.
class AdministratorMessage {
 public:
    AdministratorMessage(Desktop& desktop, AdministratorMessageView& view);

    /// Less than one second closes the front end without showing the dialog.
    void ShowDialog(const AdministratorMessageOrder& order);

    /// "Close Database Now". The window is given time to close by itself, and then has none left; until all
    /// that is over a second call changes nothing.
    void CloseNow();

    /// "Continue Working": the dialog goes, Access stays.
    void ContinueWorking();

 private:
    bool IsThere() const;
    enum class Closing { No, Asked, ToldToQuit, Terminated };

    void Remember(const AdministratorMessageOrder& order);
    void CountDown();
    std::int32_t RemainingSeconds(std::int64_t now) const;
    bool IsBlinkedOff(std::int64_t now) const;
    void GoOnClosing();
    void GiveTime(Closing stage);
    void EndClosing();
    void Unload();

    Desktop& m_desktop;
    AdministratorMessageView& m_view;
    WindowHandle m_accessWindow = 0;
    Text m_title;
    std::int64_t m_deadline = 0;    ///< tick count
    std::int64_t m_blinkStart = 0;  ///< tick count, may lie before the system's start
    Closing m_closing = Closing::No;
    int m_looks = 0;  ///< at the window since it was asked to close
    CTimer m_countDown;
    CTimer m_closingStep;
};

}  // namespace rvl
