#pragma once

#include <map>
#include <memory>
#include <optional>

#include "net/socket_server.h"
#include "platform/standard_input.h"
#include "tools/deployserver/administrator_orders.h"
#include "tools/deployserver/frontend_version.h"
#include "tools/deployserver/link_cut.h"
#include "tools/deployserver/location_service.h"
#include "tools/deployserver/update_jobs.h"
#include "tools/deployserver/verify_jobs.h"
#include "tools/deployserver/workstation_session.h"

namespace rvl::deployserver {

/// The deployment server: lets workstations find it, keeps a session for each that connects, and does what
/// the administrator orders meanwhile.
class DeployServer : private WorkstationSession::Host, private AdministratorOrders::Host {
 public:
    explicit DeployServer(const Options& options);
    ~DeployServer() override;
    DeployServer(const DeployServer&) = delete;
    DeployServer& operator=(const DeployServer&) = delete;

    /// Serves until RequestStop, or with --once until the jobs of one workstation have ended and none is
    /// awaited back from its update. Returns the exit status; raises an Error when the ports cannot be had or
    /// what is to be sent cannot be read.
    int Run();

    static void RequestStop();  ///< safe in a signal handler

 private:
    // WorkstationSession::Host
    void SendTo(std::int16_t clientId, TextView message) override { m_server.SendData(clientId, message); }
    void CloseLink(std::int16_t clientId) override { m_server.KillClient(clientId); }
    JobList JobsFor(Workstation& workstation) override;
    void OnReport(Workstation& workstation) override;
    bool Answer(Workstation& workstation, const Message& request) override;
    void JobsEnded(bool succeeded) override;

    // AdministratorOrders::Host
    std::vector<std::shared_ptr<Workstation>> LoggedIn() const override;
    void StopServing() override;

    void ReadWhatIsSent();
    void ReadExecutable();
    void TakeOrders();
    void AddFrontendJobs(JobList& jobs, Workstation& workstation);
    OrderedVersion VersionOfOrders() const;
    std::shared_ptr<WorkstationSession> SessionOf(std::int16_t clientId) const;
    void OnConnected(std::int16_t clientId);
    void OnDisconnected(std::int16_t clientId);
    void OnMessage(std::int16_t clientId, Text message);
    void CheckStopRequest();
    void End(int exitStatus);

    const Options m_options;
    Console m_console;
    FrontendVersion m_frontend;                ///< what is published
    std::map<Text, int> m_verificationRounds;  ///< by workstation uuid
    NewExecutable m_executable;
    StartDecisions m_starts;
    VersionHistory m_history;
    AdministratorOrders m_orders;
    AwaitedUpdates m_updates;
    LinkCut m_cut;
    LocationService m_location;
    SocketServer m_server;
    CTimer m_tmrStop;
    std::optional<platform::StandardInput> m_input;
    bool m_ending = false;
    bool m_anyFailed = false;
    int m_exitStatus = 0;
};

}  // namespace rvl::deployserver
