#include "session/helper_process.h"

#include <algorithm>
#include <array>

#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "session/access_windows.h"
#include "session/service_message_box.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr std::uint32_t kPollIntervalMs = 1000;

std::int32_t NumberOf(const Text& parameter) {
    return ParseLongOr(parameter, 0);
}

}  // namespace

HelperProcess::HelperProcess(ServiceConnection& connection, Desktop& desktop, HelperWindows& windows,
                             UpgradeWait upgradeWait)
    : m_connection(connection),
      m_desktop(desktop),
      m_windows(windows),
      m_upgradeWait(std::move(upgradeWait)),
      m_running(desktop, [this](const Text& command,
                                const Parameters& params) { m_connection.SendData(command, params); }),
      m_launcher(desktop, [this] { CheckForAccessWindows(); }),
      m_poll([this] { CheckForAccessWindows(); }) {}

// Life of the helper

void HelperProcess::Load() try {
    State().ApplicationTitle += " Helper";
    m_windows.LoadHelperWindow(State().ApplicationTitle + " Debug Mode", State().DebugMode);
    State().SuppressErrorDialog = true;
    m_poll.SetInterval(kPollIntervalMs);
    m_poll.SetEnabled(true);
    m_connection.Connect(*this);
} catch (...) {
    HandleError("frmClientHelper.Form_Load");
}

void HelperProcess::QueryUnload(UnloadMode mode) try {
    Log("Client Helper exiting (" + UnloadModeName(mode) + ")");
    m_poll.SetEnabled(false);
    m_connection.Close();
    TrimLogFile();
} catch (...) {
    HandleError("frmClientHelper.Form_QueryUnload");
}

void HelperProcess::OnConnected() try { ReportAllFrontends(); } catch (...) {
    HandleError("frmClientHelper.m_sck_ConnectionEstablished");
}

void HelperProcess::OnConnectionLost() {
    Log("Connection Lost");
}

// Running front ends

/// The windows are listed before the launches look for theirs, and again when one has found it: those of ours
/// that are listed carry their tags then, even one that appears this moment.
void HelperProcess::CheckForAccessWindows() try {
    std::vector<WindowHandle> windows = m_desktop.TopLevelWindows();
    if (m_launcher.LookAtPendingLaunches()) windows = m_desktop.TopLevelWindows();
    m_running.CheckForAccessWindows(windows);
} catch (...) {
    HandleError("frmClientHelper.CheckForAccessWindows");
}

void HelperProcess::ReportAllFrontends() {
    m_running.ReportAllAgain();
    CheckForAccessWindows();
}

// Messages of the service

struct HelperProcess::Command {
    TextView name;
    std::size_t parameters;  ///< at least
    void (HelperProcess::*handle)(const Parameters&);
};

const HelperProcess::Command* HelperProcess::FindCommand(TextView name) {
    using H = HelperProcess;
    static constexpr std::array<Command, 9> kCommands = {{{"TERMINATE", 0, &H::OnTerminate},
                                                          {"UPDATED_BINARY", 1, &H::OnUpdatedBinary},
                                                          {"START_FRONTEND", 8, &H::OnStartFrontend},
                                                          {"CLOSE_FRONTEND", 6, &H::OnCloseFrontend},
                                                          {"RESET_ACTIVE_FRONTENDS_STATUS", 0, &H::OnReset},
                                                          {"MSGBOX", 0, &H::OnMsgBox},
                                                          {"NEW_VERSION", 2, &H::OnNewVersion},
                                                          {"SERVER_AVAILABLE", 0, &H::Ignore},
                                                          {"FRONTEND_UPDATED", 0, &H::Ignore}}};
    const auto* const found = std::ranges::find(kCommands, name, &Command::name);
    return found == kCommands.end() ? nullptr : found;
}

void HelperProcess::OnMessage(const Text& command, const Parameters& params) try {
    const Command* const known = FindCommand(command);
    if (known == nullptr) return Log("Unknown server message: " + command);
    if (params.size() < known->parameters) return Log("Invalid parameters on " + command);
    (this->*known->handle)(params);
} catch (...) {
    HandleError("frmClientHelper.IncomingMessage");
}

void HelperProcess::OnTerminate(const Parameters& /*params*/) {
    Log("Terminating on request of service");
    m_windows.UnloadHelperWindow();
}

void HelperProcess::OnUpdatedBinary(const Parameters& params) {
    if (m_upgradeWait(params[0])) m_windows.UnloadHelperWindow();
}

void HelperProcess::OnStartFrontend(const Parameters& params) {
    StartFrontend({NumberOf(params[0]), NumberOf(params[1]), params[2], params[3], params[4], params[5],
                   params[6], params[7]});
}

void HelperProcess::StartFrontend(const FrontendLaunch& launch) {
    if (m_launcher.LookAtPendingLaunches()) CheckForAccessWindows();  // one may have come to nothing, too
    if (const auto open = FindOpenAccessObjectByDBFilename(m_desktop, launch.databasePath)) {
        Log("Instance already running, we'll just foreground it");
        m_desktop.BringToForeground(open->window);
        return;
    }
    // Whoever asks again because Access is slow wants one window; it comes to the front when it appears.
    if (m_launcher.IsLaunching(launch.databasePath)) return Log("Instance already starting, waiting for it");
    m_launcher.StartFrontend(launch);
}

void HelperProcess::OnCloseFrontend(const Parameters& params) {
    m_windows.OpenAdministratorMessage({NumberOf(params[0]), static_cast<WindowHandle>(NumberOf(params[1])),
                                        params[2], NumberOf(params[3]), toBool(params[4]), params[5]});
}

void HelperProcess::OnReset(const Parameters& /*params*/) {
    ReportAllFrontends();
}

void HelperProcess::OnMsgBox(const Parameters& params) {
    ShowServiceMessageBox(params);
}

void HelperProcess::OnNewVersion(const Parameters& params) {
    const std::int32_t frontendId = NumberOf(params[0]);
    if (m_running.IsFrontendRunning(frontendId) && !m_windows.IsNewVersionNoticeOpen(frontendId))
        m_windows.OpenNewVersionNotice(frontendId, params[1]);
}

}  // namespace rvl
