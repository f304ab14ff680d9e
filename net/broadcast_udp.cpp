#include "net/broadcast_udp.h"

#include <algorithm>
#include <utility>

#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/ipv4.h"

namespace rvl {
namespace {

constexpr int kUdp = 1;
constexpr std::uint32_t kNoAddress = 0;
constexpr std::uint32_t kEverywhere = 0xFFFFFFFF;

bool IsUsable(const InterfaceEntry& entry) {
    return entry.address != kNoAddress && entry.address != kEverywhere;
}

}  // namespace

InterfaceEntry MakeInterfaceEntry(const platform::AddressRow& row) {
    const std::uint32_t network = row.address & row.mask;
    return {row.address, row.mask, network | ~row.mask, network, row.interfaceIndex, row.flags};
}

BroadcastUDP::BroadcastUDP(MessageReceivedEvent messageReceived, TableReader readTable)
    : m_messageReceived(std::move(messageReceived)), m_readTable(std::move(readTable)) {}

BroadcastUDP::~BroadcastUDP() {
    Shutdown();
}

std::vector<InterfaceEntry> BroadcastUDP::ReadInterfaces() const {
    std::vector<InterfaceEntry> entries;
    for (const platform::AddressRow& row : m_readTable())
        entries.push_back(MakeInterfaceEntry(row));
    return entries;
}

bool BroadcastUDP::Init(std::uint16_t port, std::uint32_t recheckIntervalMs) try {
    if (!m_channel) m_channel = MessageWindow::Create("BroadcastUDP (auto-create)");
    DropSockets();
    m_interfaces = ReadInterfaces();
    m_sockets.resize(m_interfaces.size());
    if (!m_tmrRecheck || m_recheckInterval != recheckIntervalMs) StartRecheckTimer(recheckIntervalMs);
    m_port = port != 0 ? port : ChoosePort();
    BindMissing();
    return true;
} catch (...) {
    HandleError("BroadcastUDP.Init");
    return false;
}

void BroadcastUDP::Shutdown() {
    m_tmrRecheck.reset();
    DropSockets();
    m_interfaces.clear();
}

std::uint16_t BroadcastUDP::ChoosePort() {
    const auto probe = Socket::Create();
    probe->SetMsgWnd(m_channel);
    probe->SetProtocol(kUdp);
    probe->Bind(0, "");
    const std::uint16_t port = probe->LocalPort();
    probe->Drop();
    return port;
}

void BroadcastUDP::DropSockets() {
    for (const auto& socket : std::exchange(m_sockets, {}))
        if (socket) socket->Drop();
}

void BroadcastUDP::BindMissing() {
    for (std::size_t index = 0; index < m_sockets.size(); ++index)
        if (!m_sockets[index]) BindInterface(index);
}

/// One interface that cannot be bound must not silence the others.
void BroadcastUDP::BindInterface(std::size_t index) {
    if (!IsUsable(m_interfaces[index])) return;
    auto socket = Socket::Create();
    socket->SetMsgWnd(m_channel);
    socket->setEventHandler(this, static_cast<std::int16_t>(index));
    socket->SetProtocol(kUdp);
    try {
        socket->Bind(m_port, DottedText(m_interfaces[index].address));
        m_sockets[index] = std::move(socket);
    } catch (...) {
        HandleError("BroadcastUDP.BindInterface");
    }
}

std::size_t BroadcastUDP::SocketCount() const {
    return static_cast<std::size_t>(std::count_if(m_sockets.begin(), m_sockets.end(),
                                                  [](const auto& socket) { return socket != nullptr; }));
}

void BroadcastUDP::Broadcast(std::uint16_t port, const Text& datagram) {
    BindMissing();  // a network that could not be reached before may be reachable now
    for (std::size_t index = 0; index < m_sockets.size(); ++index)
        Send(index, DottedText(m_interfaces[index].broadcast), port, datagram);
}

void BroadcastUDP::Reply(const Text& host, std::uint16_t port, const Text& datagram) {
    const std::uint32_t address = ParseDotted(host).value_or(kNoAddress);
    for (std::size_t index = 0; index < m_sockets.size(); ++index) {
        const std::uint32_t network = m_interfaces[index].network;
        if ((address & network) == network) Send(index, host, port, datagram);
    }
}

void BroadcastUDP::Send(std::size_t index, const Text& host, std::uint16_t port, const Text& datagram) {
    const auto socket = m_sockets[index];
    if (!socket || socket->State() != SocketState::Open) return;
    try {
        socket->SendTo(host, port, datagram);
    } catch (...) {
        HandleError("BroadcastUDP.Send");
    }
}

void BroadcastUDP::DataReceived(std::int16_t index, const Text& data) {
    const auto socket = m_sockets.at(static_cast<std::size_t>(index));
    if (socket) m_messageReceived(socket->RemoteIP(), socket->RemotePort(), data);
}

void BroadcastUDP::Error(std::int16_t index, std::int32_t, const Text& description) {
    const auto slot = static_cast<std::size_t>(index);
    if (slot >= m_sockets.size()) return;
    Log("Broadcast on " + DottedText(m_interfaces[slot].address) + " failed: " + description);
    m_sockets[slot].reset();
}

void BroadcastUDP::StartRecheckTimer(std::uint32_t intervalMs) {
    m_recheckInterval = intervalMs;
    m_tmrRecheck = std::make_unique<CTimer>([this] { tmr_ThatTime(); });
    m_tmrRecheck->SetInterval(intervalMs);
    m_tmrRecheck->SetEnabled(true);
}

void BroadcastUDP::tmr_ThatTime() try {
    if (ReadInterfaces() == m_interfaces) return;
    ErrAssert(Init(m_port, m_recheckInterval), "Failed to reinitialize BroadcastUDP");
} catch (...) {
    HandleError("BroadcastUDP.tmr_ThatTime");
}

}  // namespace rvl
