#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "net/broadcast_udp.h"
#include "runtime/timer.h"

namespace rvl {

/// TCP port of the deployment server and UDP port of its location service.
inline constexpr std::uint16_t kServerPort = 16378;

/// Finds the deployment server: the fixed address of the settings, else the domain controller, else a UDP
/// broadcast, repeated with growing delays until a connection is established.
class ServerLocator {
 public:
    /// What the locator needs of its owner.
    class Host {
     public:
        virtual ~Host() = default;
        virtual Text ServerAddress() = 0;  ///< fixed address of the settings, may be empty
        virtual Text DomainController() = 0;
        virtual void ConnectToServer(const Text& host, std::int32_t retryIntervalMs) = 0;
        virtual bool IsConnectedToServer() const = 0;
        virtual void ShowStatus(const Text& status) = 0;
    };

    explicit ServerLocator(Host& host);

    /// Opens the broadcast channel; location itself begins with LocateServer.
    void Init();
    void Shutdown();

    void LocateServer();
    void Restart();  ///< forgets what was found and locates from the first stage
    void Stop() { m_tmrLocateServer.SetEnabled(false); }

    /// "fixed:", "domain:" or "broadcast:" and the server; empty before the first attempt.
    const Text& DiscoveryMethod() const { return m_discoveryMethod; }
    std::uint16_t Port() const { return m_locator.Port(); }

    /// Seconds from the attempt of a stage (0-4) to the next.
    static std::int32_t BroadcastRetryDelay(int stage);

 private:
    void LocateFirst();
    void TryFixedAddress(const Text& address);
    void TryDomainController(const Text& controller);
    void LocateNext();
    void SendLocateBroadcast();
    void RetryLocateIn(std::int32_t seconds);
    void tmrLocateServer_Timer();
    void m_bcuLocator_MessageReceived(const Text& remoteIP, std::uint16_t remotePort, const Text& datagram);
    void AcceptReply(const Text& remoteIP, const Text& serverName);

    Host& m_host;
    BroadcastUDP m_locator;
    CTimer m_tmrLocateServer;
    int m_stage = 0;
    std::int32_t m_retryDelay = 0;
    std::uint64_t m_locateStart = 0;
    std::int64_t m_locateWait = 0;
    bool m_foundByBroadcast = false;
    Text m_discoveryMethod;
};

}  // namespace rvl
