#pragma once

#include "deploy/server_command_ports.h"
#include "net/socket_server.h"

namespace rvl {

/// Port of 127.0.0.1 on which the service serves the processes of its own workstation.
inline constexpr std::uint16_t kLocalPort = 16379;

/// The service's hub of local connections: switchboards, helpers and start-front-end processes.
class LocalHub : public LocalSessions {
 public:
    LocalHub();

    void Open(std::uint16_t port = kLocalPort);  ///< failures of the listener are raised
    void Close();

    std::int16_t MaxClientID() const override { return m_sckClients.MaxClientID(); }
    bool HasSession(std::int16_t clientId) const override { return m_sckClients.Data(clientId) != nullptr; }
    void SendToClient(std::int16_t clientId, const Text& context, const Text& command,
                      const Text& params) override;

    /// "#" + id, followed by the peer's address in brackets when it is known: #3[127.0.0.1].
    Text ClientIDString(std::int16_t clientId) const;

 private:
    void m_sckClients_ClientConnected(std::int16_t clientId);
    void m_sckClients_ClientDisconnected(std::int16_t clientId);
    void m_sckClients_MessageReceived(std::int16_t clientId, const Text& data);

    SocketServer m_sckClients;
};

}  // namespace rvl
