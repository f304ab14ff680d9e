#include "tools/deployserver/workstation_session.h"

#include <utility>

#include "util/parameters.h"
#include "util/random_text.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

constexpr std::size_t kTokenLength = 32;

}  // namespace

WorkstationSession::WorkstationSession(Host& host, const Console& console, std::int16_t clientId,
                                       Text remoteIP)
    : m_host(host), m_console(console), m_clientId(clientId), m_remoteIP(std::move(remoteIP)) {}

// Link

/// Sending lets events run: the link may be lost, and its number taken by another workstation, any time.
void WorkstationSession::Send(TextView message) {
    if (m_stage != Stage::Closed) m_host.SendTo(m_clientId, message);
}

void WorkstationSession::CloseLink() {
    if (m_stage == Stage::Closed) return;
    OnDisconnected();
    m_host.CloseLink(m_clientId);
}

void WorkstationSession::OnDisconnected() {
    m_stage = Stage::Closed;
    PrintStep("DISCONNECT");
}

void WorkstationSession::PrintStep(const Text& line) {
    m_console.Step(line + " (#" + NumberText(m_clientId) + ")");
}

void WorkstationSession::PrintOutcome(const Text& line) {
    m_console.Outcome(line + " (#" + NumberText(m_clientId) + ")");
}

void WorkstationSession::Refuse(const Text& reason) {
    m_console.Outcome("refused #" + NumberText(m_clientId) + "[" + m_remoteIP + "]: " + reason);
    CloseLink();
}

// Messages

void WorkstationSession::OnMessage(Text text) {
    if (m_stage == Stage::Closed) return;
    const Message message = SplitMessage(std::move(text));
    if (m_current < m_jobs.size() && m_jobs[m_current]->Take(message)) return ContinueJobs();
    Dispatch(message);
}

void WorkstationSession::Dispatch(const Message& message) {
    if (message.command == "HELLO" && m_stage == Stage::AwaitingHello) return OnHello(message);
    if (message.command == "LOGIN" && m_stage == Stage::AwaitingLogin) return OnLogin(message);
    if (message.command == "PING") {
        PrintStep("PING");
        return Send(MakeMessage(message.context, "PONG", ""));
    }
    m_console.Step("UNKNOWN from #" + NumberText(m_clientId) + ": " +
                   MakeMessage(message.context, message.command, message.params));
}

void WorkstationSession::OnHello(const Message& message) {
    const auto params = SplitParameters(message.params);
    if (params.size() < 3 || params[0] != "RVL" || params[1] != "CLIENT")
        return Refuse("this HELLO is not a client's: " + message.params);
    m_console.Step("HELLO from #" + NumberText(m_clientId) + "[" + m_remoteIP + "] version " + params[2]);
    m_token = RandomNonce(kTokenLength);
    m_stage = Stage::AwaitingLogin;
    Send(MakeMessage("", "HELLO", m_token));
}

void WorkstationSession::OnLogin(const Message& message) {
    const auto login = ParseLogin(message.params);
    if (!login) return Refuse("LOGIN lacks parameters");
    const Text who = login->computer + " (" + login->domain + ") uuid " + login->uuid;
    if (!IsProofRight(*login, m_token)) return Refuse("LOGIN of " + who + " with a wrong proof");
    m_console.Step("LOGIN #" + NumberText(m_clientId) + " " + who + " proof ok, found via " +
                   login->discoveryMethod);
    m_stage = Stage::LoggedIn;
    Send(MakeMessage("", "LOGIN_OK", ""));
    m_jobs = m_host.JobsFor(*this);
    StartJob();
}

// Jobs

void WorkstationSession::StartJob() {
    if (m_current >= m_jobs.size() || m_stage == Stage::Closed) return;
    m_jobs[m_current]->Start();
    ContinueJobs();
}

void WorkstationSession::ContinueJobs() {
    const Job::Progress progress = m_jobs[m_current]->CurrentProgress();
    if (progress == Job::Progress::Running) return;
    ++m_current;
    m_host.JobEnded(progress == Job::Progress::Succeeded);
    StartJob();
}

}  // namespace rvl::deployserver
