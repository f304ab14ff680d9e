#pragma once

#include <memory>

#include "net/socket_server.h"
#include "tools/deployserver/link_cut.h"
#include "tools/deployserver/location_service.h"
#include "tools/deployserver/workstation_session.h"

namespace rvl::deployserver {

/// The deployment server: lets workstations find it and keeps a session for each that connects.
class DeployServer : private WorkstationSession::Host {
 public:
    explicit DeployServer(const Options& options);
    ~DeployServer() override;
    DeployServer(const DeployServer&) = delete;
    DeployServer& operator=(const DeployServer&) = delete;

    /// Serves until RequestStop, or with --once until the first job has ended. Returns the exit status;
    /// raises an Error when the ports cannot be had.
    int Run();

    static void RequestStop();  ///< safe in a signal handler

 private:
    // WorkstationSession::Host
    void SendTo(std::int16_t clientId, TextView message) override { m_server.SendData(clientId, message); }
    void CloseLink(std::int16_t clientId) override { m_server.KillClient(clientId); }
    JobList JobsFor(Workstation& workstation) override;
    void JobEnded(bool succeeded) override;

    std::shared_ptr<WorkstationSession> SessionOf(std::int16_t clientId) const;
    void OnConnected(std::int16_t clientId);
    void OnDisconnected(std::int16_t clientId);
    void OnMessage(std::int16_t clientId, Text message);
    void CheckStopRequest();
    void End(int exitStatus);

    const Options m_options;
    Console m_console;
    LinkCut m_cut;
    LocationService m_location;
    SocketServer m_server;
    CTimer m_tmrStop;
    bool m_ending = false;
    int m_exitStatus = 0;
};

}  // namespace rvl::deployserver
