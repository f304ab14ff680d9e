#include "session/start_frontend_process.h"

#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "runtime/process_state.h"
#include "session/service_message_box.h"
#include "session/start_helper.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr std::uint32_t kTimeoutMs = 30000;
constexpr std::uint32_t kQuitCheckMs = 50;
constexpr const char* kTryRestarting =
    "Try restarting your computer and contact your system adminstrator if the problem persists.";

}  // namespace

StartFrontendProcess::StartFrontendProcess(ServiceConnection& connection, StartFrontendView& view)
    : m_connection(connection),
      m_view(view),
      tmrTimeout([this] { TimedOut(); }),
      tmrQuitTime([this] { QuitWhenSafe(); }) {
    tmrTimeout.SetInterval(kTimeoutMs);
    tmrQuitTime.SetInterval(kQuitCheckMs);
    AddCommands();
}

void StartFrontendProcess::AddCommands() {
    for (const char* ignored : {"FRONTEND_LIST_BEGIN", "FRONTEND_ENTRY", "FRONTEND_ADD", "FRONTEND_REMOVE",
                                "UPDATED_BINARY", "FRONTEND_UPDATED"})
        m_commands.Add(ignored, 0, [](const Parameters&) {});
    m_commands.Add("FRONTEND_LIST_END", 0, [this](const Parameters&) { RequestStart(); });
    m_commands.Add("SERVER_AVAILABLE", 1,
                   [this](const Parameters& params) { SetServerAvailable(toBool(params[0])); });
    m_commands.Add("START_HELPER", 0, [](const Parameters&) { StartHelperForService(); });
    m_commands.Add("START_FRONTEND_DONE", 0, [this](const Parameters&) { QuitSoon(); });
    m_commands.Add("MSGBOX", 0, ShowServiceMessageBox);
}

void StartFrontendProcess::ShowModal(std::int32_t frontendId, const Text& title) try {
    m_frontendId = frontendId;
    m_title = title;
    tmrTimeout.SetEnabled(true);
    m_view.SetCaption(title);
    m_view.SetMessage(title + " is loading, please wait...");
    m_view.Show();
    Log("Connecting to server");
    m_connection.Connect(*this);
} catch (...) {
    HandleError("frmClientStartFrontend.ShowModal");
}

void StartFrontendProcess::Close() {
    m_unloaded = true;
    Stop();
}

// What happens

void StartFrontendProcess::OnConnectionLost() {
    if (m_stopped) return;
    Log("Connection Lost");
    Log("Connection to client service has been lost, failing");
    Abort(UnableToStart(), "Service Failure");
}

/// The connection would go on trying; who waits for a front end is told at once.
void StartFrontendProcess::OnConnectFailed() {
    if (m_stopped) return;
    Log("Unable to connect to the service, failing");
    Abort(UnableToStart(), "Service Unavailable");
}

void StartFrontendProcess::OnMessage(const Text& command, const Parameters& params) try {
    if (!m_stopped) m_commands.Handle(command, params);
} catch (...) {
    HandleError("frmClientStartFrontend.IncomingMessage");
}

void StartFrontendProcess::TimedOut() {
    Abort(kTryRestarting, "Service Timeout");
}

/// Once only: a list that is sent again, since something was deployed meanwhile, is no new wish of the user.
void StartFrontendProcess::RequestStart() {
    if (m_requested) return;
    m_requested = true;
    m_connection.SendData("START_FRONTEND", {NumberText(m_frontendId), m_title});
}

/// A server that could not be reached to begin with is the service's affair: it decides without it.
void StartFrontendProcess::SetServerAvailable(bool available) {
    const bool lost = m_serverAvailable && !available;
    m_serverAvailable = available;
    if (lost) Abort("Server no longer available. Please try again shortly.", "");
}

// The end

void StartFrontendProcess::QuitSoon() {
    Log("Time to go, waiting for safe time to quit..");
    tmrTimeout.SetEnabled(false);
    tmrQuitTime.SetEnabled(true);
}

/// Message boxes are modal inside a handler further up: what they say has to be read first.
void StartFrontendProcess::QuitWhenSafe() try {
    if (State().MsgBoxDepth > 0) return;
    Log("Our work here is done.");
    Stop();
    Unload();
} catch (...) {
    HandleError("frmClientStartFrontend.tmrQuitTime_Timer");
}

/// Nothing gets through any more while the box is open, so that there is only ever one.
void StartFrontendProcess::Abort(const Text& message, const Text& errorCode) try {
    if (m_stopped) return;
    Stop();
    const Text code = errorCode.empty() ? "" : "\r\n\r\nError code: " + errorCode;
    MsgBox(message + code, kIconCritical, m_title);
    Unload();
} catch (...) {
    HandleError("frmClientStartFrontend.Abort");
}

Text StartFrontendProcess::UnableToStart() const {
    return "Unable to start " + m_title + ".\r\n\r\n" + kTryRestarting;
}

void StartFrontendProcess::Stop() {
    if (m_stopped) return;
    m_stopped = true;
    tmrTimeout.SetEnabled(false);
    tmrQuitTime.SetEnabled(false);
    m_connection.Close();
}

void StartFrontendProcess::Unload() {
    if (m_unloaded) return;
    m_unloaded = true;
    m_view.Unload();
}

}  // namespace rvl
