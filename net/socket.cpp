#include "net/socket.h"

#include <algorithm>
#include <array>

#include "net/winsock.h"
#include "net/yield.h"
#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/ipv4.h"
#include "util/scoped_state.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using platform::SocketNotification;

constexpr std::size_t kReadSize = 8192;
constexpr std::size_t kDatagramSize = 32768;
constexpr std::size_t kSendChunk = 8192;
constexpr int kBacklog = 5;
constexpr int kAddressNotAvailable = 10049;

// Offsets from the application error base.
constexpr int kOperationActive = 1;
constexpr int kConnectFailed = 2;
constexpr int kWrongState = 4;
constexpr int kInvalidRequest = 5;
constexpr int kWrongProtocol = 6;

[[noreturn]] void Fail(int offset, TextView source, TextView description) {
    throw Error(kApplicationErrorBase + offset, Text(source), Text(description));
}

[[noreturn]] void RaiseFatal(const Text& description) {
    throw Error(kApplicationErrorBase, "Socket", description);
}

void CheckSystem(int error, TextView source) {
    if (error != 0) throw Error(error, Text(source), GetErrorString(error));
}

std::uint32_t BindAddress(const Text& dotted, TextView source) {
    if (dotted.empty()) return 0;  // all interfaces
    const auto address = ParseDotted(dotted);
    if (!address) CheckSystem(kAddressNotAvailable, source);
    return *address;
}

}  // namespace

std::shared_ptr<Socket> Socket::Create() {
    struct Creatable : Socket {};
    return std::make_shared<Creatable>();
}

Socket::Socket() {
    StartWinsock();
}

Socket::~Socket() {
    m_lookup.reset();
    m_endpoint.Close();
    EndWinsock();
}

void Socket::Drop() {
    setEventHandler(nullptr, 0);
    m_endpoint.Close();
    Reset();  // finds no endpoint: no event runs here
}

// Properties

void Socket::setEventHandler(SocketEvent* sink, std::int16_t index) {
    m_sink = sink;
    m_index = index;
}

void Socket::SetMsgWnd(std::shared_ptr<MessageWindow> channel) {
    if (m_endpoint.Handle() != platform::kNoSocket)
        Fail(kOperationActive, "Socket.MsgWnd", "Disconnect first before changing the message window");
    m_channel = std::move(channel);
}

void Socket::SetProtocol(int protocol) {
    if (protocol != 0 && protocol != 1) RaiseInvalidPropertyValue("Socket.Protocol");
    if (m_endpoint.Handle() != platform::kNoSocket)
        Fail(kOperationActive, "Socket.Protocol", "Disconnect first before changing protocol");
    m_protocol = static_cast<platform::Protocol>(protocol);
}

Text Socket::StateToString(int state) {
    static constexpr std::array<const char*, 6> kNames = {"Disconnected", "Resolving", "Connecting",
                                                          "Connected",    "Listening", "Open"};
    const bool known = state >= 0 && state < static_cast<int>(kNames.size());
    if (!known) RaiseFatal("Unknown state " + NumberText(state) + " in Socket.StateToString");
    return kNames[static_cast<std::size_t>(state)];
}

void Socket::CheckIdle(TextView source) const {
    if (m_state != SocketState::Disconnected)
        Fail(kOperationActive, source, "An operation is already active: You must disconnect first");
}

void Socket::CheckProtocol(platform::Protocol protocol, TextView source) const {
    if (m_protocol == protocol) return;
    const char* name = protocol == platform::Protocol::Tcp ? "TCP" : "UDP";
    Fail(kWrongProtocol, source, Text("This operation is only supported on ") + name + " sockets");
}

void Socket::CheckState(SocketState state, TextView source) const {
    if (m_state != state) Fail(kWrongState, source, "Operation invalid in this state");
}

void Socket::EnsureChannel() {
    if (!m_channel) m_channel = MessageWindow::Create("Socket (auto-create)");
}

void Socket::SetState(SocketState state) {
    if (m_state == state) return;
    m_state = state;
    const int number = static_cast<int>(state);
    Raise("StateChanged",
          [&](SocketEvent& sink) { sink.StateChanged(m_index, number, StateToString(number)); });
}

void Socket::SetRemote(platform::Ipv4Endpoint remote) {
    m_remoteIP = DottedText(remote.address);
    m_remotePort = remote.port;
}

void Socket::ReadLocalPort() {
    m_endpoint.LocalPort(m_localPort);
}

void Socket::WatchEndpoint() {
    m_endpoint.Watch([weak = weak_from_this()](SocketNotification notification, int error) {
        if (const auto self = weak.lock()) self->OnNotification(notification, error);
    });
}

// Opening

void Socket::StartLookup(const Text& host, platform::NameLookup::Completion completion) {
    m_lookup =
        platform::NameLookup::Forward(host, [weak = weak_from_this(), completion = std::move(completion)](
                                                int error, const Text& name, std::uint32_t address) {
            if (const auto self = weak.lock()) {
                self->m_lookup.reset();
                error != 0 ? self->RaiseError(error) : completion(error, name, address);
            }
        });
}

void Socket::Connect(const Text& host, std::uint16_t port) try {
    const auto self = shared_from_this();
    CheckProtocol(platform::Protocol::Tcp, "Socket.Connect");
    CheckIdle("Socket.Connect");
    EnsureChannel();
    m_remoteHost = host;
    if (ParseDotted(host)) return ConnectTo(host, port);
    SetState(SocketState::Resolving);
    if (m_state != SocketState::Resolving) return;  // the sink has reset it
    StartLookup(host, [this, port](int, const Text&, std::uint32_t address) {
        ConnectTo(DottedText(address), port);
    });
} catch (...) {
    HandleErrorAndReRaise("Socket.Connect");
}

void Socket::ConnectTo(const Text& address, std::uint16_t port) {
    const auto self = shared_from_this();
    CheckProtocol(platform::Protocol::Tcp, "Socket.ConnectTo");
    EnsureChannel();
    const auto parsed = ParseDotted(address);
    m_endpoint.Close();
    SetState(SocketState::Connecting);
    if (m_state != SocketState::Connecting) return;  // the sink has reset it
    const platform::Ipv4Endpoint remote{parsed.value_or(0), port};
    int error = parsed ? m_endpoint.Open(platform::Protocol::Tcp) : kAddressNotAvailable;
    if (error == 0) {
        SetRemote(remote);
        WatchEndpoint();
        error = m_endpoint.Connect(remote);
    }
    if (error == 0) return;
    const Text description = "Error connecting to " + address + ":" + NumberText(port);
    m_endpoint.Close();  // nothing of a connect that did not start may be notified
    Reset();
    Raise("Error", [&](SocketEvent& sink) {
        sink.Error(m_index, kApplicationErrorBase + kConnectFailed, description);
    });
}

void Socket::OpenBound(platform::Protocol protocol, std::uint16_t port, const Text& bindAddress,
                       TextView source) {
    EnsureChannel();
    const std::uint32_t address = BindAddress(bindAddress, source);
    CheckSystem(m_endpoint.Open(protocol), source);
    int error = m_endpoint.Bind({address, port});
    if (error == 0)
        error =
            protocol == platform::Protocol::Tcp ? m_endpoint.Listen(kBacklog) : m_endpoint.EnableBroadcast();
    if (error != 0) m_endpoint.Close();
    CheckSystem(error, source);
    ReadLocalPort();
    WatchEndpoint();
}

void Socket::Listen(std::uint16_t port, const Text& bindAddress) try {
    CheckProtocol(platform::Protocol::Tcp, "Socket.Listen");
    CheckIdle("Socket.Listen");
    OpenBound(platform::Protocol::Tcp, port, bindAddress, "Socket.Listen");
    SetState(SocketState::Listening);
} catch (...) {
    HandleErrorAndReRaise("Socket.Listen");
}

void Socket::Bind(std::uint16_t port, const Text& bindAddress) try {
    CheckProtocol(platform::Protocol::Udp, "Socket.Bind");
    CheckIdle("Socket.Bind");
    OpenBound(platform::Protocol::Udp, port, bindAddress, "Socket.Bind");
    SetState(SocketState::Open);
} catch (...) {
    HandleErrorAndReRaise("Socket.Bind");
}

void Socket::Accept(std::intptr_t requestId) {
    constexpr int kBadDescriptor = 10009, kNotASocket = 10038, kNotAListener = 10022, kNotAStream = 10045;
    CheckProtocol(platform::Protocol::Tcp, "Socket.Accept");
    CheckIdle("Socket.Accept");
    EnsureChannel();
    platform::Ipv4Endpoint remote;
    const int error = m_endpoint.Accept(requestId, remote);
    if (error == kBadDescriptor || error == kNotASocket || error == kNotAListener || error == kNotAStream)
        Fail(kInvalidRequest, "Socket.Accept", "Invalid requestID specified");
    CheckSystem(error, "Socket.Accept");
    SetRemote(remote);
    ReadLocalPort();
    WatchEndpoint();
    SetState(SocketState::Connected);
}

void Socket::DNS(const Text& host, bool reverse) {
    if (m_state == SocketState::Resolving) CheckIdle("Socket.DNS");  // its lookup is still needed
    EnsureChannel();
    const auto address = ParseDotted(host);
    const auto complete = [this](const Text& name, const Text& dotted) {
        Raise("DNSComplete", [&](SocketEvent& sink) { sink.DNSComplete(m_index, name, dotted); });
    };
    if (address && !reverse) return complete(host, host);
    if (!reverse)
        return StartLookup(host, [complete](int, const Text& name, std::uint32_t found) {
            complete(name, DottedText(found));
        });
    if (!address) RaiseInvalidCall("Socket.DNS");
    m_lookup = platform::NameLookup::Reverse(
        *address, [weak = weak_from_this(), complete](int error, const Text& name, std::uint32_t asked) {
            if (const auto self = weak.lock()) {
                self->m_lookup.reset();
                error != 0 ? self->RaiseError(error) : complete(name, DottedText(asked));
            }
        });
}

void Socket::Reset() {
    if (m_resetting) return;
    const auto self = shared_from_this();
    const ScopedFlag resetting(m_resetting);
    if (m_endpoint.Handle() != platform::kNoSocket) {
        YieldToPendingEvents();
        m_endpoint.Close();
    }
    m_lookup.reset();
    m_wouldBlock = false;
    SetState(SocketState::Disconnected);
}

// Notifications

void Socket::OnNotification(SocketNotification notification, int error) {
    switch (notification) {
        case SocketNotification::ConnectFinished:
            return OnConnectFinished(error);
        case SocketNotification::Readable:
            return OnReadable();
        case SocketNotification::Writable:
            m_wouldBlock = false;
            return SendSomeData(false);
        case SocketNotification::Closed:
            return OnClosed();
        case SocketNotification::ConnectionPending:
            return Raise("ConnectionRequest",
                         [&](SocketEvent& sink) { sink.ConnectionRequest(m_index, m_endpoint.Handle()); });
        case SocketNotification::OutOfBand:
            break;
    }
    RaiseFatal("Unknown WinsockProc message " + NumberText(static_cast<int>(notification)));
}

void Socket::OnConnectFinished(int error) {
    if (error != 0) return RaiseError(error);
    ReadLocalPort();
    SetState(SocketState::Connected);
    if (m_state != SocketState::Connected) return;  // the sink has reset it
    Raise("Connected", [&](SocketEvent& sink) { sink.Connected(m_index); });
}

void Socket::OnReadable() {
    m_protocol == platform::Protocol::Tcp ? ReceiveStream() : ReceiveDatagram();
}

void Socket::ReceiveStream() {
    // Taken out while it is used: a handler may let more data of this socket come in.
    Text data = std::move(m_receiveBuffer);
    data.resize(kReadSize);
    std::size_t received = 0;
    m_endpoint.Receive(data.data(), data.size(), received);
    data.resize(received);
    if (received > 0 && m_state == SocketState::Connected)
        Raise("DataReceived", [&](SocketEvent& sink) { sink.DataReceived(m_index, data); });
    if (received == kReadSize)
        m_receiveBuffer = std::move(data);  // more is coming; an idle socket keeps none
}

void Socket::ReceiveDatagram() {
    static std::array<char, kDatagramSize> buffer;
    std::size_t received = 0;
    platform::Ipv4Endpoint remote;
    if (m_endpoint.ReceiveFrom(buffer.data(), buffer.size(), received, remote) != 0) return;
    SetRemote(remote);
    if (received == 0 || m_state != SocketState::Open) return;
    const Text data(buffer.data(), received);
    Raise("DataReceived", [&](SocketEvent& sink) { sink.DataReceived(m_index, data); });
}

void Socket::OnClosed() {
    if (m_resetting) return;  // whoever resets it tells why
    Reset();
    Raise("Closed", [&](SocketEvent& sink) { sink.Closed(m_index); });
}

// Sending

void Socket::SendTo(const Text& host, std::uint16_t port, const Text& data) try {
    const auto self = shared_from_this();
    CheckProtocol(platform::Protocol::Udp, "Socket.SendTo");
    CheckState(SocketState::Open, "Socket.SendTo");
    if (const auto address = ParseDotted(host)) return SendDatagram(*address, port, data);
    SetState(SocketState::Resolving);
    if (m_state != SocketState::Resolving) return;  // the sink has reset it
    StartLookup(host, [this, port, data](int, const Text&, std::uint32_t address) {
        SetState(SocketState::Open);
        SendDatagram(address, port, data);
    });
} catch (...) {
    HandleErrorAndReRaise("Socket.SendTo");
}

void Socket::SendDatagram(std::uint32_t address, std::uint16_t port, const Text& data) {
    const int error = m_endpoint.SendTo({address, port}, data.data(), data.size());
    // A datagram that finds no room is lost like one on the way; the socket goes on.
    if (error != 0 && error != platform::kErrorWouldBlock) return RaiseError(error);
    Raise("SendComplete", [&](SocketEvent& sink) { sink.SendComplete(m_index); });
}

void Socket::SendData(TextView data, TextView more) {
    CheckProtocol(platform::Protocol::Tcp, "Socket.SendData");
    CheckState(SocketState::Connected, "Socket.SendData");
    if (data.empty() && more.empty()) return;
    m_sendQueue.Append(data);
    m_sendQueue.Append(more);
    SendSomeData(true);
}

void Socket::SendSomeData(bool deferredCompletion) {
    if (m_sending || m_sendQueue.IsEmpty() || m_wouldBlock) return;
    const auto self = shared_from_this();
    {
        const ScopedFlag sending(m_sending);
        RunSendLoop();
    }
    // Outside the loop: whoever hears that everything is sent may send again.
    if (m_state == SocketState::Connected && m_sendQueue.IsEmpty()) CompleteSending(deferredCompletion);
}

void Socket::RunSendLoop() {
    std::size_t sent = 0;
    while (m_state == SocketState::Connected && !m_sendQueue.IsEmpty() && SendChunk(sent)) {
        YieldToPendingEvents();
        Raise("SendProgress",
              [&](SocketEvent& sink) { sink.SendProgress(m_index, sent, m_sendQueue.Size()); });
    }
}

/// Sends the next piece of the queue; false when the loop has to stop.
bool Socket::SendChunk(std::size_t& sent) {
    const TextView chunk = m_sendQueue.Waiting().substr(0, kSendChunk);
    const bool moreFollows = m_sendQueue.Size() > chunk.size();
    const int error = m_endpoint.Send(chunk.data(), chunk.size(), moreFollows, sent);
    if (error == 0) {
        m_sendQueue.Take(sent);
        return true;
    }
    m_wouldBlock = error == platform::kErrorWouldBlock;
    if (!m_wouldBlock) RaiseError(error);
    return false;
}

void Socket::CompleteSending(bool deferred) {
    const auto complete = [](Socket& socket) {
        socket.Raise("SendComplete", [&](SocketEvent& sink) { sink.SendComplete(socket.m_index); });
    };
    if (!deferred) return complete(*this);
    m_channel->Post([weak = weak_from_this(), complete] {
        if (const auto self = weak.lock()) complete(*self);
    });
}

// Errors

void Socket::RaiseError(std::int32_t number, const Text& extra) {
    if (m_resetting) return;
    Reset();
    const Text description = GetErrorString(number) + (extra.empty() ? Text() : " (" + extra + ")");
    Raise("Error", [&](SocketEvent& sink) { sink.Error(m_index, number, description); });
}

template <typename Call>
void Socket::Raise(const char* event, Call call) {
    if (m_sink == nullptr) return;
    try {
        call(*m_sink);
    } catch (...) {
        const ErrorRecord failure = CurrentError();
        OnSinkFailure(event, failure.Number, failure.Description);
    }
}

void Socket::OnSinkFailure(const char* event, std::int32_t number, const Text& description) {
    constexpr const char* kEmptyLine = "\r\n\r\n";
    const Text first =
        Text("SocketEvent.") + event + " caused error " + NumberText(number) + ": " + description;
    if (m_sink == nullptr) return Log(first);
    try {
        m_sink->Error(m_index, number, first);
    } catch (...) {
        const ErrorRecord second = CurrentError();
        const Text text = "The SocketEvent.Error() method caused error " + NumberText(second.Number) + ": " +
                          second.Description + " while handling:" + kEmptyLine + first + kEmptyLine +
                          "The program will attempt to continue when you click OK";
        // The service has no user to click: a box would stop it for ever.
        if (rvl::State().ServiceMode)
            Log(text);
        else
            MsgBox(text, kIconExclamation, "SocketEvent Error");
    }
}

}  // namespace rvl
