#pragma once

#include <vector>

#include "deploy/deployment_audience.h"
#include "deploy/local_sessions.h"
#include "net/socket_server.h"
#include "session/session_host.h"
#include "util/message.h"

namespace rvl {

class ClientConnUI;

/// Port of 127.0.0.1 on which the service serves the processes of its own workstation.
inline constexpr std::uint16_t kLocalPort = 16379;

/// The service's hub of local connections: switchboards, helpers and start-front-end processes. It greets and
/// classifies each connection, gives it a session, routes its messages, and reaches one, all or all helpers
/// of them. Connections are addressed by their client id, the slot of the server underneath.
class LocalHub : private SessionHost, public LocalSessions, public DeploymentAudience {
 public:
    /// What the hub needs of the service.
    class Service {
     public:
        virtual ~Service() = default;
        virtual bool IsServerConnected() const = 0;
        virtual void SendToServer(const Text& context, const Text& command,
                                  const std::vector<Text>& params) = 0;
        virtual void SendCurrentFrontends() = 0;
        /// The new executable that waits for the local connections to end; empty when there is none.
        virtual Text PendingUpdatePath() const = 0;
        virtual void MaybeUpgradeNow() = 0;
        virtual LocalDatabase& Database() = 0;
    };

    explicit LocalHub(Service& service);
    ~LocalHub() override;
    LocalHub(const LocalHub&) = delete;
    LocalHub& operator=(const LocalHub&) = delete;

    void Open(std::uint16_t port = kLocalPort);  ///< failures of the listener are raised
    void Close();

    std::int16_t ConnectedClients() const { return m_sckClients.ConnectedClients(); }
    std::uint16_t LocalPort() const { return m_sckClients.LocalPort(); }

    /// Every session whose user is known learns of the server, the most recent login first.
    void NotifyServerConnected(bool connected);

    void SendToAllHelpersEx(const Text& context, const Text& command, const Text& params);

    // LocalSessions
    bool HasSession(std::int32_t clientId) const override;
    bool IsHelper(std::int32_t clientId) const override;
    bool IsSwitchboard(std::int32_t clientId) const override;
    void SendToClientEx(std::int16_t clientId, const Text& context, const Text& command,
                        const Text& params) override;
    void SendToAllClientsEx(const Text& context, const Text& command, const Text& params) override;
    Text StartFrontend(std::int32_t helperId, std::int32_t frontendId) override;

    // DeploymentAudience
    void VersionDeployed(std::int32_t frontendVersionId) override;
    void VersionRemoved(std::int32_t frontendId) override;

 private:
    // SessionHost
    Text ClientIDString(std::int16_t clientId) const override;
    std::int16_t MaxClientID() const override { return m_sckClients.MaxClientID(); }
    std::shared_ptr<ClientConn> ClientSession(std::int16_t clientId) const override;
    std::shared_ptr<ClientConnHelper> FindHelperByUsername(const Text& username) const override;
    void KillConnection(std::int16_t clientId, const Text& context, const Text& reason,
                        bool sendReasonToRemote) override;
    bool IsServerConnected() const override { return m_service.IsServerConnected(); }
    void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) override;
    void SendCurrentFrontends() override { m_service.SendCurrentFrontends(); }
    LocalDatabase& Database() override { return m_service.Database(); }

    void m_sckClients_ClientConnected(std::int16_t clientId);
    void m_sckClients_ClientDisconnected(std::int16_t clientId);
    void m_sckClients_MessageReceived(std::int16_t clientId, Text data);
    void Route(std::int16_t clientId, const Message& message);
    void Greet(std::int16_t clientId, const Message& message);
    void PassThrough(std::int16_t clientId, const Message& message);
    void ReportError(const Message& message);
    void NotifySession(ClientConn& session, bool connected) const;
    void CleanupForClient();

    template <typename Session>
    std::shared_ptr<Session> SessionAs(std::int32_t clientId) const;
    template <typename Session, typename Action>
    void ForEach(const Action& action) const;

    Service& m_service;
    SocketServer m_sckClients;
};

}  // namespace rvl
