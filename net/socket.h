#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "net/byte_queue.h"
#include "net/message_window.h"
#include "net/socket_event.h"
#include "platform/name_lookup.h"
#include "platform/socket_endpoint.h"

namespace rvl {

enum class SocketState {
    Disconnected = 0,
    Resolving = 1,
    Connecting = 2,
    Connected = 3,
    Listening = 4,
    Open = 5
};

/// One TCP connection, TCP listener or UDP endpoint, driven by events: nothing blocks, every operation
/// completes later and is reported to the one event sink. Misuse raises an Error whose number is the
/// application error base plus 1 (an operation is active), 4 (wrong state), 5 (invalid request id) or 6
/// (wrong protocol); what the operating system refuses at once raises its socket error number; what fails
/// later arrives as the Error event and leaves the socket Disconnected.
class Socket : public std::enable_shared_from_this<Socket> {
 public:
    static std::shared_ptr<Socket> Create();
    ~Socket();
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    void setEventHandler(SocketEvent* sink, std::int16_t index);
    void SetMsgWnd(std::shared_ptr<MessageWindow> channel);
    const std::shared_ptr<MessageWindow>& MsgWnd() const { return m_channel; }
    void SetProtocol(int protocol);  ///< 0 TCP, 1 UDP
    int Protocol() const { return static_cast<int>(m_protocol); }

    void Connect(const Text& host, std::uint16_t port);
    void ConnectTo(const Text& address, std::uint16_t port);
    void Listen(std::uint16_t port, const Text& bindAddress);
    void Accept(std::intptr_t requestId);
    void Bind(std::uint16_t port, const Text& bindAddress);
    void SendTo(const Text& host, std::uint16_t port, const Text& data);
    /// Both parts go out as one: a header need not be copied in front of its content first.
    void SendData(TextView data, TextView more = {});
    void DNS(const Text& host, bool reverse);
    void Reset();

    /// Takes away sink, channel events and endpoint for good, as its owner does before it lets go.
    void Drop();

    SocketState State() const { return m_state; }
    static Text StateToString(int state);
    const Text& RemoteHost() const { return m_remoteHost; }
    const Text& RemoteIP() const { return m_remoteIP; }
    std::uint16_t RemotePort() const { return m_remotePort; }
    std::uint16_t LocalPort() const { return m_localPort; }

 private:
    Socket();

    struct PendingDatagram {
        std::uint16_t port = 0;
        Text data;
    };

    void CheckIdle(TextView source) const;
    void CheckProtocol(platform::Protocol protocol, TextView source) const;
    void CheckState(SocketState state, TextView source) const;
    void EnsureChannel();
    void SetState(SocketState state);
    void SetRemote(platform::Ipv4Endpoint remote);
    void ReadLocalPort();
    void OpenBound(platform::Protocol protocol, std::uint16_t port, const Text& bindAddress, TextView source);
    void StartLookup(const Text& host, platform::NameLookup::Completion completion);
    void SendDatagram(std::uint32_t address, std::uint16_t port, const Text& data);
    void WatchEndpoint();

    void OnNotification(platform::SocketNotification notification, int error);
    void OnConnectFinished(int error);
    void OnReadable();
    void ReceiveStream();
    void ReceiveDatagram();
    void OnClosed();

    void SendSomeData(bool deferredCompletion);
    void RunSendLoop();
    bool SendChunk(std::size_t& sent);
    void CompleteSending(bool deferred);
    void RaiseError(std::int32_t number, const Text& extra = "");

    template <typename Call>
    void Raise(const char* event, Call call);
    void OnSinkFailure(const char* event, std::int32_t number, const Text& description);

    platform::SocketEndpoint m_endpoint;
    platform::Protocol m_protocol = platform::Protocol::Tcp;
    SocketState m_state = SocketState::Disconnected;
    SocketEvent* m_sink = nullptr;
    std::int16_t m_index = 0;
    std::shared_ptr<MessageWindow> m_channel;

    Text m_remoteHost;
    Text m_remoteIP;
    std::uint16_t m_remotePort = 0;
    std::uint16_t m_localPort = 0;

    Text m_receiveBuffer;
    ByteQueue m_sendQueue;
    bool m_sending = false;     ///< a send loop is running
    bool m_wouldBlock = false;  ///< the system refused more data until the writable notification
    bool m_resetting = false;
    std::unique_ptr<platform::NameLookup> m_lookup;
};

}  // namespace rvl
