#pragma once

#include <cstdint>

#include "net/socket_server.h"
#include "tools/deployserver/console.h"
#include "tools/deployserver/job.h"
#include "tools/deployserver/login.h"

namespace rvl::deployserver {

/// One connection of a workstation: its greeting and login, the answers to its keep-alive, and the jobs that
/// it gets when it has logged in.
class WorkstationSession : public ClientData, private Workstation {
 public:
    /// What a session needs of the server.
    class Host {
     public:
        virtual ~Host() = default;
        virtual void SendTo(std::int16_t clientId, TextView message) = 0;
        virtual void CloseLink(std::int16_t clientId) = 0;
        virtual JobList JobsFor(Workstation& workstation) = 0;
        virtual void JobEnded(bool succeeded) = 0;
    };

    WorkstationSession(Host& host, const Console& console, std::int16_t clientId, Text remoteIP);

    void OnMessage(Text message);
    void OnDisconnected();

 private:
    enum class Stage { AwaitingHello, AwaitingLogin, LoggedIn, Closed };

    // Workstation
    void Send(TextView message) override;
    void CloseLink() override;
    void PrintStep(const Text& line) override;
    void PrintOutcome(const Text& line) override;

    void Dispatch(const Message& message);
    void OnHello(const Message& message);
    void OnLogin(const Message& message);
    void Refuse(const Text& reason);
    void StartJob();
    void ContinueJobs();

    Host& m_host;
    const Console& m_console;
    const std::int16_t m_clientId;
    const Text m_remoteIP;
    Stage m_stage = Stage::AwaitingHello;
    Text m_token;
    JobList m_jobs;
    std::size_t m_current = 0;  ///< index of the job that runs
};

}  // namespace rvl::deployserver
