#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "net/server_locator.h"
#include "net/socket_client.h"
#include "runtime/timer.h"

namespace rvl {

/// What LOGIN tells the deployment server about this workstation.
struct WorkstationDescription {
    Text uuid;
    Text computer;
    Text executable;
    bool isNtFamily = true;
    Text operatingSystem;
    Text accessVersions;  ///< comma-separated
    Text programFiles;
    Text commonAppData;
};

/// The one TCP link to the deployment server: location, HELLO and LOGIN, keep-alive, and the commands by
/// which the server moves the workstation elsewhere.
class ServerLink : private ServerLocator::Host {
 public:
    /// What the link needs of the service.
    class Owner {
     public:
        virtual ~Owner() = default;
        virtual Text ServerAddressSetting() = 0;
        virtual void StoreServerAddress(const Text& address) = 0;  ///< empty: no fixed address
        virtual WorkstationDescription DescribeWorkstation() = 0;
        virtual void ServerMessageReceived(Text message) = 0;
        virtual void ServerLoggedIn() = 0;  ///< LOGIN_OK, before the change of the connected state
        virtual void ServerConnectedChanged(bool connected) = 0;
        virtual void StatusChanged() = 0;  ///< Status or DiscoveryMethod
        virtual void KeepAliveTick() = 0;  ///< every 5 seconds, for what else is looked after so often
    };

    explicit ServerLink(Owner& owner);

    void InitLocator() { m_locator.Init(); }
    void StartLocating();  ///< locates the server one second later
    void Shutdown();

    /// Joins the parameters, logs and sends; dropped with a log line when the link is down.
    void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params);
    bool IsServerConnected() const { return m_serverConnected; }
    const Text& Status() const { return m_status; }
    const Text& DiscoveryMethod() const { return m_locator.DiscoveryMethod(); }
    std::uint16_t LocatorPort() const { return m_locator.Port(); }

    // The server's link-level commands.
    void OnHello(const std::vector<Text>& params);
    void OnLoginOk();
    void OnPong();
    void OnSetServer(const std::vector<Text>& params);
    void OnFindServerAgain();

 private:
    Text ServerAddress() override { return m_owner.ServerAddressSetting(); }
    Text DomainController() override;
    void ConnectToServer(const Text& host, std::int32_t retryIntervalMs) override;
    bool IsConnectedToServer() const override { return m_sckServer.IsConnected(); }
    void ShowStatus(const Text& status) override;

    void m_sckServer_ConnectionEstablished();
    void m_sckServer_ConnectionLost();
    void UpdateServerConnected(bool connected);
    void SendLogin();
    void tmrInit_Timer();
    void tmrKeepAlive_Timer();
    void CheckPing();

    Owner& m_owner;
    ServerLocator m_locator;
    SocketClient m_sckServer;
    CTimer m_tmrInit;
    CTimer m_tmrKeepAlive;
    Text m_status;
    Text m_domainName;
    Text m_serverToken;
    bool m_serverConnected = false;
    std::uint64_t m_lastPing = 0;
    bool m_awaitingPong = false;
};

}  // namespace rvl
