#pragma once

#include "runtime/timer.h"
#include "runtime/unload_mode.h"
#include "session/access_launcher.h"
#include "session/helper_windows.h"
#include "session/running_frontends.h"
#include "session/service_connection.h"
#include "session/upgrade_wait.h"

namespace rvl {

/// The process on the user's desktop that starts and watches front ends for the service (frmClientHelper).
class HelperProcess : private ConnectionOwner {
 public:
    HelperProcess(ServiceConnection& connection, Desktop& desktop, HelperWindows& windows,
                  UpgradeWait upgradeWait);

    void Load();                        ///< once, at the start
    void QueryUnload(UnloadMode mode);  ///< the helper's window is closing

    /// Reports what has changed among the running front ends.
    void CheckForAccessWindows();

 private:
    using Parameters = std::vector<Text>;
    struct Command;
    static const Command* FindCommand(TextView name);

    void OnConnected() override;
    void OnConnectionLost() override;
    void OnMessage(const Text& command, const Parameters& params) override;

    // What the service wants
    void OnTerminate(const Parameters& params);
    void OnUpdatedBinary(const Parameters& params);
    void OnStartFrontend(const Parameters& params);
    void OnCloseFrontend(const Parameters& params);
    void OnReset(const Parameters& params);
    void OnMsgBox(const Parameters& params);
    void OnNewVersion(const Parameters& params);
    void Ignore(const Parameters& /*params*/) {}

    void StartFrontend(const FrontendLaunch& launch);
    void ReportAllFrontends();

    ServiceConnection& m_connection;
    Desktop& m_desktop;
    HelperWindows& m_windows;
    UpgradeWait m_upgradeWait;
    RunningFrontends m_running;
    AccessLauncher m_launcher;
    CTimer m_poll;
};

}  // namespace rvl
