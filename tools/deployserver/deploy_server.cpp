#include "tools/deployserver/deploy_server.h"

#include <csignal>
#include <utility>

#include "platform/event_loop.h"
#include "runtime/system_information.h"
#include "tools/deployserver/push_file_job.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

constexpr std::uint32_t kStopCheckInterval = 100;

volatile std::sig_atomic_t g_stopRequested = 0;

Text ServerName(const Options& options) {
    return options.name.empty() ? ComputerName() : options.name;
}

}  // namespace

DeployServer::DeployServer(const Options& options)
    : m_options(options),
      m_console(options.quiet),
      m_cut(options.cut),
      m_location(ServerName(options), m_console),
      m_server({[this](std::int16_t id) { OnConnected(id); }, [this](std::int16_t id) { OnDisconnected(id); },
                [this](std::int16_t id, Text message) { OnMessage(id, std::move(message)); }}),
      m_tmrStop([this] { CheckStopRequest(); }) {
    m_tmrStop.SetInterval(kStopCheckInterval);
}

/// Closing lets events run, which must find a whole server.
DeployServer::~DeployServer() {
    m_ending = true;
    m_location.Close();
    m_server.Shutdown();
}

int DeployServer::Run() {
    if (m_options.push)
        FilePieces("").Open(m_options.push->localFile);  // better refused now than at each login
    m_server.Init(m_options.port, "");
    if (m_options.locate) m_location.Open(m_options.port);
    m_tmrStop.SetEnabled(true);
    m_console.Outcome(Text("LISTENING on ") + (m_options.locate ? "TCP and UDP" : "TCP") + " port " +
                      NumberText(m_options.port) + " as " + ServerName(m_options));
    platform::RunEventLoop();
    return m_exitStatus;
}

// Ending

void DeployServer::RequestStop() {
    g_stopRequested = 1;
}

void DeployServer::CheckStopRequest() {
    if (g_stopRequested == 0) return;
    m_console.Step("stopped");
    End(m_options.once ? 1 : 0);
}

void DeployServer::End(int exitStatus) {
    if (std::exchange(m_ending, true)) return;
    m_exitStatus = exitStatus;
    platform::QuitEventLoop();
}

// Jobs

JobList DeployServer::JobsFor(Workstation& workstation) {
    JobList jobs;
    if (m_options.push) jobs.push_back(std::make_unique<PushFileJob>(workstation, *m_options.push, m_cut));
    return jobs;
}

void DeployServer::JobEnded(bool succeeded) {
    if (m_options.once) End(succeeded ? 0 : 1);
}

// Sessions

std::shared_ptr<WorkstationSession> DeployServer::SessionOf(std::int16_t clientId) const {
    return std::static_pointer_cast<WorkstationSession>(m_server.Data(clientId));
}

void DeployServer::OnConnected(std::int16_t clientId) {
    const Text remoteIP = m_server.RemoteIP(clientId);
    m_console.Step("CONNECT from " + remoteIP + ":" + NumberText(m_server.RemotePort(clientId)) + " (#" +
                   NumberText(clientId) + ")");
    WorkstationSession::Host& host = *this;
    m_server.SetData(clientId, std::make_shared<WorkstationSession>(host, m_console, clientId, remoteIP));
}

void DeployServer::OnDisconnected(std::int16_t clientId) {
    if (const auto session = SessionOf(clientId)) session->OnDisconnected();
}

void DeployServer::OnMessage(std::int16_t clientId, Text message) {
    const auto session = SessionOf(clientId);  // held here: its link may be lost while it sends
    if (session && !m_ending) session->OnMessage(std::move(message));
}

}  // namespace rvl::deployserver
