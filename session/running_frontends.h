#pragma once

#include <functional>

#include "session/desktop.h"

namespace rvl {

/// An Access main window as a check has seen it.
struct RunningFrontend {
    WindowHandle window = 0;
    std::int32_t frontendId = 0;  ///< 0 when the window carries none
    Text accessVersion;           ///< "11.0.8166"
    Text fullName;                ///< of its database; empty when none is open or Access cannot be reached
};

/// Watches the running Accesses and reports which front end each one shows and when it ends.
class RunningFrontends {
 public:
    /// Sends FRONTEND_START and FRONTEND_END. It may let events run.
    using Report = std::function<void(const Text& command, const std::vector<Text>& params)>;

    RunningFrontends(Desktop& desktop, Report report) : m_desktop(desktop), m_report(std::move(report)) {}

    /// Compares the windows with those of the last check and reports what has changed; also closes the known
    /// dialog. Does nothing while it runs already.
    void CheckForAccessWindows(const std::vector<WindowHandle>& topLevelWindows);

    /// Forgets what has been reported, so that the next check reports every front end.
    void ReportAllAgain();

    bool IsFrontendRunning(std::int32_t frontendId) const;

 private:
    struct Message {
        const char* command;
        std::vector<Text> params;
    };
    using List = std::vector<RunningFrontend>;

    List Look(std::vector<WindowHandle> accessWindows) const;
    RunningFrontend LookAt(WindowHandle window) const;
    void NoteEnded(List& now, std::vector<Message>& messages);
    void NoteStarted(const List& now, std::vector<Message>& messages) const;
    void ForgetFrontend(RunningFrontend& frontend);
    Message StartMessage(const RunningFrontend& frontend) const;
    void Send(const std::vector<Message>& messages);

    Desktop& m_desktop;
    Report m_report;
    List m_running;
    bool m_checking = false;
    bool m_forgotten = false;  ///< ReportAllAgain was called during the check
};

}  // namespace rvl
