#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "net/socket.h"
#include "platform/network_interfaces.h"
#include "runtime/timer.h"

namespace rvl {

/// One IPv4 network the workstation is attached to; addresses in network byte order.
struct InterfaceEntry {
    std::uint32_t address = 0;
    std::uint32_t mask = 0;
    std::uint32_t broadcast = 0;
    std::uint32_t network = 0;
    std::uint32_t interfaceIndex = 0;
    std::uint32_t flags = 0;

    bool operator==(const InterfaceEntry&) const = default;
};

InterfaceEntry MakeInterfaceEntry(const platform::AddressRow& row);

/// Sends datagrams to the broadcast address of every attached network and receives the answers: one UDP
/// socket per interface address, all on one port, created anew when the interfaces change.
class BroadcastUDP : private SocketEventAdapter {
 public:
    using MessageReceivedEvent =
        std::function<void(const Text& remoteIP, std::uint16_t remotePort, const Text& datagram)>;
    using TableReader = std::function<std::vector<platform::AddressRow>()>;

    explicit BroadcastUDP(MessageReceivedEvent messageReceived,
                          TableReader readTable = platform::ReadAddressTable);
    ~BroadcastUDP() override;
    BroadcastUDP(const BroadcastUDP&) = delete;
    BroadcastUDP& operator=(const BroadcastUDP&) = delete;

    /// Port 0 lets the system choose one. An interface whose socket cannot be bound is logged and tried again
    /// with the next broadcast, the others work meanwhile. False when it failed altogether.
    bool Init(std::uint16_t port, std::uint32_t recheckIntervalMs);
    void Shutdown();

    void Broadcast(std::uint16_t port, const Text& datagram);

    /// Answers through every interface whose network has no bit that the host lacks; the mask plays no part.
    void Reply(const Text& host, std::uint16_t port, const Text& datagram);

    std::uint16_t Port() const { return m_port; }
    std::uint32_t RecheckInterval() const { return m_recheckInterval; }
    std::size_t SocketCount() const;

 private:
    void DataReceived(std::int16_t index, const Text& data) override;
    void Error(std::int16_t index, std::int32_t number, const Text& description) override;

    std::vector<InterfaceEntry> ReadInterfaces() const;
    std::uint16_t ChoosePort();
    void DropSockets();
    void BindMissing();
    void BindInterface(std::size_t index);
    void Send(std::size_t index, const Text& host, std::uint16_t port, const Text& datagram);
    void StartRecheckTimer(std::uint32_t intervalMs);
    void tmr_ThatTime();

    MessageReceivedEvent m_messageReceived;
    TableReader m_readTable;
    std::shared_ptr<MessageWindow> m_channel;
    std::vector<InterfaceEntry> m_interfaces;
    std::vector<std::shared_ptr<Socket>> m_sockets;  ///< same indexes; none for an unusable interface
    std::uint16_t m_port = 0;
    std::uint32_t m_recheckInterval = 0;
    std::unique_ptr<CTimer> m_tmrRecheck;
};

}  // namespace rvl
