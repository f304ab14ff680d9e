#include "net/socket_server.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "net/yield.h"
#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr std::int16_t kListenerIndex = -1;
constexpr std::int64_t kIdleTimeout = 60000;
constexpr std::size_t kMostSlots = std::numeric_limits<std::int16_t>::max();

bool IsConnected(const std::shared_ptr<Socket>& socket) {
    return socket && socket->State() == SocketState::Connected;
}

}  // namespace

SocketServer::SocketServer(Events events)
    : m_events(std::move(events)), m_tmrKeepAlive([this] { m_tmrKeepAlive_ThatTime(); }) {
    m_tmrKeepAlive.SetInterval(static_cast<std::uint32_t>(kIdleTimeout));
    m_tmrKeepAlive.SetEnabled(true);
}

SocketServer::~SocketServer() {
    m_tmrKeepAlive.SetEnabled(false);
    Shutdown();
}

void SocketServer::SetMsgWnd(std::shared_ptr<MessageWindow> channel) {
    if (m_listener) RaiseNotSettableAtRunTime("SocketServer.MsgWnd");
    m_channel = std::move(channel);
}

void SocketServer::Init(std::uint16_t port, const Text& bindAddress) {
    Shutdown();
    if (!m_channel) m_channel = MessageWindow::Create("SocketServer (auto-create)");
    auto listener = Socket::Create();
    listener->SetMsgWnd(m_channel);
    listener->setEventHandler(this, kListenerIndex);
    listener->Listen(port, bindAddress);
    m_listener = std::move(listener);
}

void SocketServer::Shutdown() {
    if (const auto listener = std::exchange(m_listener, nullptr)) listener->Drop();
    DropSlots();
}

void SocketServer::DropSlots() {
    for (std::size_t id = 0; id < m_slots.size(); ++id)
        KillClient(static_cast<std::int16_t>(id));
    m_slots.clear();
}

// Slots

SocketServer::Slot* SocketServer::SlotOf(std::int16_t clientId) {
    const auto index = static_cast<std::size_t>(clientId);
    return clientId >= 0 && index < m_slots.size() ? &m_slots[index] : nullptr;
}

const SocketServer::Slot* SocketServer::SlotOf(std::int16_t clientId) const {
    return const_cast<SocketServer*>(this)->SlotOf(clientId);
}

/// The lowest free slot, or one more; -1 when ids are used up.
std::int16_t SocketServer::FreeSlot() {
    const auto free =
        std::find_if(m_slots.begin(), m_slots.end(), [](const Slot& slot) { return !slot.socket; });
    const auto id = static_cast<std::int16_t>(free - m_slots.begin());
    if (free != m_slots.end()) return id;
    if (m_slots.size() >= kMostSlots) return -1;
    m_slots.emplace_back();
    return id;
}

void SocketServer::KillClient(std::int16_t clientId) {
    Slot* slot = SlotOf(clientId);
    if (slot == nullptr || !slot->socket) return;
    // Freed first, closed and released afterwards: closing lets events run, releasing the owner's object may
    // send, and neither may meet a half-closed slot.
    const Slot closing = std::exchange(*slot, Slot{});
    if (closing.reader) closing.reader->Close();
    closing.socket->Drop();
}

void SocketServer::SetData(std::int16_t clientId, std::shared_ptr<ClientData> data) {
    if (Slot* slot = SlotOf(clientId)) slot->data = std::move(data);
}

std::shared_ptr<ClientData> SocketServer::Data(std::int16_t clientId) const {
    const Slot* slot = SlotOf(clientId);
    return slot != nullptr ? slot->data : nullptr;
}

Text SocketServer::RemoteIP(std::int16_t clientId) const {
    const Slot* slot = SlotOf(clientId);
    return slot != nullptr && slot->socket ? slot->socket->RemoteIP() : Text();
}

std::uint16_t SocketServer::RemotePort(std::int16_t clientId) const {
    const Slot* slot = SlotOf(clientId);
    return slot != nullptr && slot->socket ? slot->socket->RemotePort() : std::uint16_t{0};
}

std::int16_t SocketServer::ConnectedClients() const {
    return static_cast<std::int16_t>(std::count_if(
        m_slots.begin(), m_slots.end(), [](const Slot& slot) { return IsConnected(slot.socket); }));
}

std::uint16_t SocketServer::LocalPort() const {
    return m_listener ? m_listener->LocalPort() : std::uint16_t{0};
}

// Sending

void SocketServer::SendData(std::int16_t clientId, TextView message) try {
    const Slot* slot = SlotOf(clientId);
    if (slot == nullptr || !slot->socket) return;
    const auto socket = slot->socket;
    if (IsConnected(socket))
        socket->SendData(FrameHeader(message), message);
    else
        Log("SocketServer::SendData Not Connected");
} catch (...) {
    HandleError("SocketServer.SendData");
}

void SocketServer::SendDataAll(TextView message) try {
    const Text frame = MakeFrame(message);
    for (std::size_t id = 0; id < m_slots.size(); ++id) {
        const auto socket = m_slots[id].socket;
        if (!socket) continue;
        if (IsConnected(socket))
            socket->SendData(frame);
        else
            Log("SocketServer::SendDataAll Not Connected");
    }
} catch (...) {
    HandleError("SocketServer.SendDataAll");
}

// Events

void SocketServer::ConnectionRequest(std::int16_t, std::intptr_t requestId) try {
    auto socket = Socket::Create();
    socket->SetMsgWnd(m_channel);
    socket->Accept(requestId);
    const std::int16_t id = FreeSlot();
    if (id < 0) {
        Log("No client id is free, refusing connection from " + socket->RemoteIP());
        return socket->Drop();
    }
    socket->setEventHandler(this, id);
    *SlotOf(id) = {std::move(socket), std::make_shared<FrameReader>(), nullptr, GetTickCountEx()};
    m_events.ClientConnected(id);
} catch (...) {
    HandleError("SocketServer.SocketEvent_ConnectionRequest");
}

void SocketServer::DataReceived(std::int16_t index, const Text& data) try {
    const Slot* slot = SlotOf(index);
    if (slot == nullptr || !slot->reader)
        return Log("Client #" + NumberText(index) + " no longer exists, discarding received data");
    const auto reader = slot->reader;  // survives a handler that closes the client
    const bool sound =
        reader->Receive(data, [this, index](Text message) { OnMessage(index, std::move(message)); });
    if (!sound) CloseClient(index);
} catch (...) {
    HandleError("SocketServer.SocketEvent_DataReceived");
}

void SocketServer::OnMessage(std::int16_t clientId, Text message) {
    if (Slot* slot = SlotOf(clientId)) slot->lastActivity = GetTickCountEx();
    if (message.empty()) return;
    try {
        m_events.MessageReceived(clientId, std::move(message));
    } catch (...) {  // the messages behind it are served
        HandleError("SocketServer.SocketEvent_DataReceived");
    }
}

void SocketServer::Closed(std::int16_t index) {
    CloseClient(index);
}

void SocketServer::Error(std::int16_t index, std::int32_t, const Text& description) {
    if (index == kListenerIndex) return Log("Listener failed: " + description);
    CloseClient(index);
}

void SocketServer::CloseClient(std::int16_t clientId) {
    const Slot* slot = SlotOf(clientId);
    if (slot == nullptr || !slot->socket) return;
    const auto closing = slot->socket;
    closing->setEventHandler(nullptr, 0);  // the owner may let events run: none of this client any more
    slot->reader->Close();
    try {
        m_events.ClientDisconnected(clientId);
    } catch (...) {  // the slot is freed whatever its owner does
        HandleError("SocketServer.CloseClient");
    }
    // The owner may have killed the client itself, and a newcomer may have the slot already.
    slot = SlotOf(clientId);
    if (slot != nullptr && slot->socket == closing) KillClient(clientId);
}

void SocketServer::m_tmrKeepAlive_ThatTime() try {
    YieldToPendingEvents();  // a keep-alive that has arrived but was not read yet counts
    for (std::size_t id = 0; id < m_slots.size(); ++id) {
        const Slot& slot = m_slots[id];
        if (slot.reader) slot.reader->ReleaseRoom();
        if (!slot.socket || !CheckTickCountEx(slot.lastActivity, kIdleTimeout)) continue;
        Log("Idle timeout for connection, closing.");
        CloseClient(static_cast<std::int16_t>(id));
    }
} catch (...) {
    HandleError("SocketServer.m_tmrKeepAlive_ThatTime");
}

}  // namespace rvl
