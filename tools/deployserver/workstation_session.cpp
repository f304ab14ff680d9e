#include "tools/deployserver/workstation_session.h"

#include <utility>

#include "util/parameters.h"
#include "util/random_text.h"
#include "util/scoped_state.h"
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

/// Sending lets events run. What arrives then waits until the message at hand is dealt with.
void WorkstationSession::OnMessage(Text text) {
    m_arrived.push_back(std::move(text));
    if (m_handling) return;
    const ScopedFlag handling(m_handling);
    while (!m_arrived.empty()) {
        const Message message = SplitMessage(std::exchange(m_arrived.front(), {}));
        m_arrived.pop_front();
        if (m_stage != Stage::Closed) Handle(message);
    }
}

void WorkstationSession::Handle(const Message& message) {
    const bool taken = TakeReport(message) || (m_current < m_jobs.size() && m_jobs[m_current]->Take(message));
    taken ? ContinueJobs() : Dispatch(message);
}

bool WorkstationSession::TakeReport(const Message& message) {
    if (m_stage != Stage::LoggedIn || !m_report.Take(message)) return false;
    if (message.command == WorkstationReport::kEnd) m_host.OnReport(*this);
    return true;
}

void WorkstationSession::Dispatch(const Message& message) {
    if (message.command == "HELLO" && m_stage == Stage::AwaitingHello) return OnHello(message);
    if (message.command == "LOGIN" && m_stage == Stage::AwaitingLogin) return OnLogin(message);
    if (message.command == "PING") {
        PrintStep("PING");
        return Send(MakeMessage(message.context, "PONG", ""));
    }
    if (m_stage == Stage::LoggedIn && TakeFromPeople(message)) return;
    m_console.Step("UNKNOWN from #" + NumberText(m_clientId) + ": " +
                   MakeMessage(message.context, message.command, message.params));
}

/// What the workstation tells of its local sessions and front ends, and what users ask for.
bool WorkstationSession::TakeFromPeople(const Message& message) {
    const auto told = m_people.Take(message);
    if (told) PrintStep(*told);
    return told || m_host.Answer(*this, message);
}

void WorkstationSession::OnHello(const Message& message) {
    const auto params = SplitParameters(message.params);
    if (params.size() < 3 || params[0] != "RVL" || params[1] != "CLIENT")
        return Refuse("this HELLO is not a client's: " + message.params);
    m_console.Step("HELLO from #" + NumberText(m_clientId) + "[" + m_remoteIP + "] version " + params[2]);
    m_version = params[2];
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
    m_login = *login;
    Send(MakeMessage("", "LOGIN_OK", ""));
    m_jobs = m_host.JobsFor(*this);
    if (m_jobs.empty()) return;
    m_jobs.front()->Start();
    ContinueJobs();
}

// Jobs

/// Goes on to the next job, or to a later one, for as long as the current one has ended.
void WorkstationSession::ContinueJobs() {
    while (m_current < m_jobs.size()) {
        const Job::Progress progress = m_jobs[m_current]->CurrentProgress();
        if (progress == Job::Progress::Running) return;
        if (progress == Job::Progress::Failed) return EndJobs(false);
        GoToNextJob(progress == Job::Progress::NothingLeft);
        if (m_current == m_jobs.size()) return EndJobs(true);
        if (m_stage == Stage::Closed) return;
        m_jobs[m_current]->Start();
    }
}

void WorkstationSession::GoToNextJob(bool independent) {
    ++m_current;
    while (independent && m_current < m_jobs.size() && !m_jobs[m_current]->IsIndependent())
        ++m_current;
}

void WorkstationSession::EndJobs(bool succeeded) {
    m_current = m_jobs.size();
    m_host.JobsEnded(succeeded);
}

}  // namespace rvl::deployserver
