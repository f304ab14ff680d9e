#pragma once

#include <cstdint>
#include <deque>

#include "net/socket_server.h"
#include "tools/deployserver/console.h"
#include "tools/deployserver/job.h"
#include "tools/deployserver/login.h"

namespace rvl::deployserver {

/// One connection of a workstation: its greeting and login, the answers to its keep-alive, and the jobs that
/// it gets when it has logged in.
class WorkstationSession : public ClientData, public Workstation {
 public:
    /// What a session needs of the server.
    class Host {
     public:
        virtual ~Host() = default;
        virtual void SendTo(std::int16_t clientId, TextView message) = 0;
        virtual void CloseLink(std::int16_t clientId) = 0;
        virtual JobList JobsFor(Workstation& workstation) = 0;
        virtual void OnReport(Workstation& workstation) = 0;                        ///< a new one has arrived
        virtual bool Answer(Workstation& workstation, const Message& request) = 0;  ///< false: none is due
        virtual void JobsEnded(bool succeeded) = 0;
    };

    WorkstationSession(Host& host, const Console& console, std::int16_t clientId, Text remoteIP);

    void OnMessage(Text message);
    void OnDisconnected();
    bool IsLoggedIn() const { return m_stage == Stage::LoggedIn; }

 private:
    enum class Stage { AwaitingHello, AwaitingLogin, LoggedIn, Closed };

    // Workstation
    void Send(TextView message) override;
    void CloseLink() override;
    const Text& Version() const override { return m_version; }
    const Login& LoginData() const override { return m_login; }
    const WorkstationReport& Report() const override { return m_report; }
    const LocalPeople& People() const override { return m_people; }
    void PrintStep(const Text& line) override;
    void PrintOutcome(const Text& line) override;

    void Handle(const Message& message);
    bool TakeReport(const Message& message);
    void Dispatch(const Message& message);
    bool TakeFromPeople(const Message& message);
    void OnHello(const Message& message);
    void OnLogin(const Message& message);
    void Refuse(const Text& reason);
    void ContinueJobs();
    void GoToNextJob(bool independent);
    void EndJobs(bool succeeded);

    Host& m_host;
    const Console& m_console;
    const std::int16_t m_clientId;
    const Text m_remoteIP;
    Stage m_stage = Stage::AwaitingHello;
    std::deque<Text> m_arrived;  ///< messages not handled yet
    bool m_handling = false;
    Text m_version;
    Text m_token;
    Login m_login;
    WorkstationReport m_report;
    LocalPeople m_people;
    JobList m_jobs;
    std::size_t m_current = 0;  ///< index of the job that runs
};

}  // namespace rvl::deployserver
