#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

#include "net/frame_reader.h"
#include "net/socket.h"
#include "runtime/timer.h"

namespace rvl {

/// Base of the objects that an owner attaches to client slots.
class ClientData {
 public:
    virtual ~ClientData() = default;
};

/// Listens on one TCP port and keeps any number of framed connections in numbered slots. The slot number is
/// the client id; a freed slot is reused, lowest id first. A client that sends no frame for more than a
/// minute is closed at the next check.
class SocketServer : private SocketEvent {
 public:
    struct Events {
        std::function<void(std::int16_t clientId)> ClientConnected;
        std::function<void(std::int16_t clientId)> ClientDisconnected;  ///< Data and peer can still be read
        std::function<void(std::int16_t clientId, Text message)> MessageReceived;
    };

    explicit SocketServer(Events events);
    ~SocketServer() override;
    SocketServer(const SocketServer&) = delete;
    SocketServer& operator=(const SocketServer&) = delete;

    void SetMsgWnd(std::shared_ptr<MessageWindow> channel);  ///< error 382 while listening

    /// Drops all slots and listens anew; port 0 lets the system choose. Failures of the listener are raised.
    void Init(std::uint16_t port, const Text& bindAddress);

    /// Drops the listener and all slots without events.
    void Shutdown();

    void SendData(std::int16_t clientId, TextView message);
    void SendDataAll(TextView message);
    void KillClient(std::int16_t clientId);

    void SetData(std::int16_t clientId, std::shared_ptr<ClientData> data);
    std::shared_ptr<ClientData> Data(std::int16_t clientId) const;
    Text RemoteIP(std::int16_t clientId) const;
    std::uint16_t RemotePort(std::int16_t clientId) const;
    std::int16_t ConnectedClients() const;
    std::int16_t MaxClientID() const { return static_cast<std::int16_t>(m_slots.size()) - 1; }
    std::uint16_t LocalPort() const;

 private:
    struct Slot {
        std::shared_ptr<Socket> socket;  ///< none marks a free slot
        std::shared_ptr<FrameReader> reader;
        std::shared_ptr<ClientData> data;
        std::uint64_t lastActivity = 0;
    };

    void Error(std::int16_t index, std::int32_t number, const Text& description) override;
    void Closed(std::int16_t index) override;
    void Connected(std::int16_t) override {}
    void DataReceived(std::int16_t index, const Text& data) override;
    void ConnectionRequest(std::int16_t index, std::intptr_t requestId) override;
    void SendProgress(std::int16_t, std::size_t, std::size_t) override {}
    void SendComplete(std::int16_t) override {}
    void StateChanged(std::int16_t, int, const Text&) override {}
    void DNSComplete(std::int16_t, const Text&, const Text&) override {}

    Slot* SlotOf(std::int16_t clientId);
    const Slot* SlotOf(std::int16_t clientId) const;
    std::int16_t FreeSlot();
    void DropSlots();
    void CloseClient(std::int16_t clientId);
    void OnMessage(std::int16_t clientId, Text message);
    void m_tmrKeepAlive_ThatTime();

    Events m_events;
    std::shared_ptr<MessageWindow> m_channel;
    std::shared_ptr<Socket> m_listener;
    std::deque<Slot> m_slots;
    CTimer m_tmrKeepAlive;
};

}  // namespace rvl
