#include "tools/deployserver/deploy_server.h"

#include <csignal>
#include <utility>

#include "platform/event_loop.h"
#include "runtime/file_digest.h"
#include "runtime/system_information.h"
#include "tools/deployserver/deploy_job.h"
#include "tools/deployserver/publish_job.h"
#include "tools/deployserver/report_job.h"
#include "util/path_text.h"
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
      m_starts(m_options.people),
      m_orders(*this, m_console, m_starts, m_history, m_options.people.historyFile),
      m_updates(m_options.update, m_console, [this] { JobsEnded(false); }),
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
    m_input.reset();
    m_location.Close();
    m_server.Shutdown();
}

int DeployServer::Run() {
    ReadWhatIsSent();
    m_server.Init(m_options.port, "");
    if (m_options.locate) m_location.Open(m_options.port);
    m_tmrStop.SetEnabled(true);
    m_console.Outcome(Text("LISTENING on ") + (m_options.locate ? "TCP and UDP" : "TCP") + " port " +
                      NumberText(m_options.port) + " as " + ServerName(m_options));
    if (m_options.people.takesOrders) TakeOrders();
    platform::RunEventLoop();
    return m_exitStatus;
}

/// Better refused now than at each login.
void DeployServer::ReadWhatIsSent() {
    if (m_options.IsPushing()) FilePieces("").Open(m_options.push.localFile);
    if (m_options.frontend.IsPublishing()) {
        m_frontend = LoadFrontendVersion(m_options.frontend);
        m_history.AddPublished(m_frontend);
    }
    if (!m_options.people.historyFile.empty()) m_history.Read(m_options.people.historyFile);
    if (m_options.update.IsUpdating()) ReadExecutable();
}

void DeployServer::ReadExecutable() {
    const Text& path = m_options.update.localFile;
    FilePieces("").Open(path);
    m_executable = {{FileNameOf(path), path, MD5SumOfFile(path)}, m_options.update.remotePath};
}

// Ending

void DeployServer::RequestStop() {
    g_stopRequested = 1;
}

void DeployServer::CheckStopRequest() {
    if (g_stopRequested == 0) return;
    StopServing();
}

void DeployServer::StopServing() {
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
    if (m_updates.IsToBeJudged(workstation)) {  // all that came before the update has been done
        jobs.push_back(std::make_unique<UpdateResultJob>(workstation, m_updates));
        return jobs;
    }
    if (m_options.IsPushing())
        jobs.push_back(std::make_unique<FilePush>(workstation, m_options.push, m_options.transfer, m_cut));
    if (m_options.frontend.NeedsReport()) AddFrontendJobs(jobs, workstation);
    if (m_options.update.IsUpdating())
        jobs.push_back(
            std::make_unique<UpdateJob>(workstation, m_executable, m_updates, m_options.transfer, m_cut));
    return jobs;
}

void DeployServer::AddFrontendJobs(JobList& jobs, Workstation& workstation) {
    const FrontendOptions& frontend = m_options.frontend;
    int& rounds = m_verificationRounds[workstation.LoginData().uuid];
    const Verification verification{frontend.orders, VersionOfOrders(), rounds};
    jobs.push_back(std::make_unique<ReportJob>(workstation));
    if (rounds > 0) jobs.push_back(std::make_unique<JudgeJob>(workstation, verification));
    if (frontend.IsPublishing())
        jobs.push_back(std::make_unique<PublishJob>(workstation, m_frontend, m_options.transfer, m_cut));
    if (frontend.orders.empty()) return;
    jobs.push_back(std::make_unique<DeployJob>(workstation, frontend.orders, VersionOfOrders()));
    if (frontend.verify) jobs.push_back(std::make_unique<LogInAgainJob>(workstation, verification));
}

OrderedVersion DeployServer::VersionOfOrders() const {
    if (m_options.frontend.IsPublishing()) return {m_frontend.versionId, m_frontend.FileCount()};
    return {m_options.frontend.versionId.value_or(0), 0};
}

void DeployServer::OnReport(Workstation& workstation) {
    const auto print = m_options.frontend.report ? &Workstation::PrintOutcome : &Workstation::PrintStep;
    const auto& records = workstation.Report().Records();
    if (records.empty()) (workstation.*print)("REPORT no front ends");
    for (const ReportRecord& record : records)
        (workstation.*print)("REPORT " + Describe(record));
}

/// Another workstation that is in the middle of its update is waited for: it is to be told about.
void DeployServer::JobsEnded(bool succeeded) {
    m_anyFailed = m_anyFailed || !succeeded;
    if (m_options.once && !m_updates.IsAnyAwaited()) End(m_anyFailed ? 1 : 0);
}

// People

bool DeployServer::Answer(Workstation& workstation, const Message& request) {
    return m_starts.Answer(workstation, request) || m_history.Answer(workstation, request);
}

/// A server that nobody orders anything any more serves on.
void DeployServer::TakeOrders() {
    m_input.emplace(platform::StandardInput::Events{[this](const std::string& line) {
                                                        if (!m_ending) m_orders.CarryOut(line);
                                                    },
                                                    [this] { m_console.Step("no more orders"); }});
}

std::vector<std::shared_ptr<Workstation>> DeployServer::LoggedIn() const {
    std::vector<std::shared_ptr<Workstation>> found;
    for (std::int16_t id = 0; id <= m_server.MaxClientID(); ++id)
        if (const auto session = SessionOf(id); session && session->IsLoggedIn()) found.push_back(session);
    return found;
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
