#include "platform/socket_endpoint.h"

#include <winsock2.h>

#include <ws2tcpip.h>

#include <memory>
#include <utility>

#include "platform/event_loop.h"
#include "platform/win32/socket_parting.h"
#include "platform/win32/socket_watch.h"

namespace rvl::platform {
namespace {

sockaddr_in ToSockaddr(Ipv4Endpoint endpoint) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = endpoint.address;
    address.sin_port = htons(endpoint.port);
    return address;
}

Ipv4Endpoint FromSockaddr(const sockaddr_in& address) {
    return {address.sin_addr.s_addr, ntohs(address.sin_port)};
}

int ResultOf(int returned) {
    return returned == SOCKET_ERROR ? WSAGetLastError() : 0;
}

int SetOption(SOCKET socket, int level, int name, BOOL value) {
    return ResultOf(setsockopt(socket, level, name, reinterpret_cast<const char*>(&value), sizeof value));
}

/// The last accept failed for want of something: its connection may still be pending.
bool& AcceptFailed() {
    static bool failed = false;
    return failed;
}

/// A datagram that nobody took is reported with the next receive; it is none of that one's business.
void IgnoreUnreachablePeers(SOCKET socket) {
    constexpr DWORD kUdpConnectionReset = 0x9800000C;  // SIO_UDP_CONNRESET
    BOOL report = FALSE;
    DWORD size = 0;
    WSAIoctl(socket, kUdpConnectionReset, &report, sizeof report, nullptr, 0, &size, nullptr, nullptr);
}

}  // namespace

/// Shared with the watch's handler, so that an endpoint may close or destroy itself while it is notified.
struct SocketEndpoint::Impl : std::enable_shared_from_this<SocketEndpoint::Impl> {
    SOCKET socket = INVALID_SOCKET;
    Protocol protocol = Protocol::Tcp;
    bool writableWanted = false;
    Notify notify;
    std::unique_ptr<SocketWatch> watch;
    std::unique_ptr<WakeUp> rest;  ///< of a listener that could not accept

    ~Impl() { Close(); }

    void Close() {
        watch.reset();
        rest.reset();
        notify = nullptr;
        writableWanted = false;
        if (socket == INVALID_SOCKET) return;
        const SOCKET closing = std::exchange(socket, INVALID_SOCKET);
        protocol == Protocol::Tcp ? PartFrom(closing) : static_cast<void>(closesocket(closing));
    }

    void Raise(SocketNotification notification, int error = 0) {
        const Notify handler = notify;  // a copy: the handler may close the endpoint
        if (handler) handler(notification, error);
    }

    void OnEvent(int event, int error) {
        const auto alive = shared_from_this();
        switch (event) {
            case FD_WRITE:
                if (std::exchange(writableWanted, false)) Raise(SocketNotification::Writable);
                break;
            case FD_ACCEPT:
                OnConnectionPending();
                break;
            case FD_CLOSE:
                OnClosed(error);
                break;
            default:
                Raise(static_cast<SocketNotification>(event), error);
        }
    }

    /// A connection that cannot be accepted for now is announced again at once: the listener rests instead.
    void OnConnectionPending() {
        constexpr std::uint64_t kRest = 1000;
        AcceptFailed() = false;
        Raise(SocketNotification::ConnectionPending);
        if (!AcceptFailed() || !watch) return;
        watch->Pause();
        rest = std::make_unique<WakeUp>([this] { watch->Resume(); });
        rest->After(kRest);
    }

    /// The end is announced as soon as it is known, what came before it may still wait to be received.
    void OnClosed(int error) {
        if (HoldsData()) {
            Raise(SocketNotification::Readable);
            if (watch) watch->Repeat(FD_CLOSE, error);
            return;
        }
        watch.reset();
        Raise(SocketNotification::Closed, error);
    }

    bool HoldsData() const {
        char first = 0;
        return ::recv(socket, &first, 1, MSG_PEEK) > 0;
    }

    int Adopt(SOCKET opened, Protocol kind) {
        if (opened == INVALID_SOCKET) return WSAGetLastError();
        Close();
        socket = opened;
        protocol = kind;
        u_long nonBlocking = 1;
        if (const int code = ResultOf(ioctlsocket(socket, static_cast<long>(FIONBIO), &nonBlocking));
            code != 0) {
            Close();
            return code;
        }
        // Requests and replies alternate: waiting to fill a segment would cost a round-trip each time.
        if (kind == Protocol::Tcp) SetOption(socket, IPPROTO_TCP, TCP_NODELAY, TRUE);
        if (kind == Protocol::Udp) IgnoreUnreachablePeers(socket);
        return 0;
    }
};

SocketEndpoint::SocketEndpoint() : m_impl(std::make_shared<Impl>()) {}
SocketEndpoint::~SocketEndpoint() {
    m_impl->Close();
}

int SocketEndpoint::Open(Protocol protocol) {
    const bool stream = protocol == Protocol::Tcp;
    // Not inherited by the processes that this one starts.
    const SOCKET opened = WSASocketW(AF_INET, stream ? SOCK_STREAM : SOCK_DGRAM,
                                     stream ? IPPROTO_TCP : IPPROTO_UDP, nullptr, 0, WSA_FLAG_OVERLAPPED);
    return m_impl->Adopt(opened, protocol);
}

int SocketEndpoint::Bind(Ipv4Endpoint local) {
    const sockaddr_in address = ToSockaddr(local);
    return ResultOf(::bind(m_impl->socket, reinterpret_cast<const sockaddr*>(&address), sizeof address));
}

int SocketEndpoint::EnableBroadcast() {
    return SetOption(m_impl->socket, SOL_SOCKET, SO_BROADCAST, TRUE);
}

int SocketEndpoint::Listen(int backlog) {
    return ResultOf(::listen(m_impl->socket, backlog));
}

int SocketEndpoint::Connect(Ipv4Endpoint remote) {
    const sockaddr_in address = ToSockaddr(remote);
    const int result =
        ResultOf(::connect(m_impl->socket, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    return result == kErrorWouldBlock ? 0 : result;
}

int SocketEndpoint::Accept(std::intptr_t listener, Ipv4Endpoint& remote) {
    sockaddr_in address{};
    int size = sizeof address;
    const SOCKET accepted =
        ::accept(static_cast<SOCKET>(listener), reinterpret_cast<sockaddr*>(&address), &size);
    const int error = accepted == INVALID_SOCKET ? WSAGetLastError() : 0;
    AcceptFailed() = error != 0 && error != kErrorWouldBlock && error != WSAECONNRESET;
    if (error != 0) return error;
    // It has inherited the listener's way of reporting.
    SocketWatch::ReportNothing(accepted);
    remote = FromSockaddr(address);
    return m_impl->Adopt(accepted, Protocol::Tcp);
}

void SocketEndpoint::Watch(Notify notify) {
    m_impl->notify = std::move(notify);
    m_impl->watch = std::make_unique<SocketWatch>(
        m_impl->socket, [impl = m_impl.get()](int event, int error) { impl->OnEvent(event, error); });
}

int SocketEndpoint::Send(const char* data, std::size_t size, bool, std::size_t& sent) {
    const int count = ::send(m_impl->socket, data, static_cast<int>(size), 0);
    sent = count > 0 ? static_cast<std::size_t>(count) : 0;
    const int error = ResultOf(count);
    if (error == kErrorWouldBlock) m_impl->writableWanted = true;
    return error;
}

int SocketEndpoint::Receive(char* buffer, std::size_t size, std::size_t& received) {
    const int count = ::recv(m_impl->socket, buffer, static_cast<int>(size), 0);
    received = count > 0 ? static_cast<std::size_t>(count) : 0;
    return ResultOf(count);
}

int SocketEndpoint::SendTo(Ipv4Endpoint remote, const char* data, std::size_t size) {
    const sockaddr_in address = ToSockaddr(remote);
    return ResultOf(::sendto(m_impl->socket, data, static_cast<int>(size), 0,
                             reinterpret_cast<const sockaddr*>(&address), sizeof address));
}

int SocketEndpoint::ReceiveFrom(char* buffer, std::size_t size, std::size_t& received, Ipv4Endpoint& remote) {
    sockaddr_in address{};
    int length = sizeof address;
    const int count = ::recvfrom(m_impl->socket, buffer, static_cast<int>(size), 0,
                                 reinterpret_cast<sockaddr*>(&address), &length);
    received = count > 0 ? static_cast<std::size_t>(count) : 0;
    const int error = ResultOf(count);
    // Elsewhere a datagram that is too long is cut without a word.
    if (error == WSAEMSGSIZE) received = size;
    if (error != 0 && error != WSAEMSGSIZE) return error;
    remote = FromSockaddr(address);
    return 0;
}

int SocketEndpoint::LocalPort(std::uint16_t& port) const {
    sockaddr_in address{};
    int size = sizeof address;
    const int result = ResultOf(::getsockname(m_impl->socket, reinterpret_cast<sockaddr*>(&address), &size));
    if (result == 0) port = ntohs(address.sin_port);
    return result;
}

std::intptr_t SocketEndpoint::Handle() const {
    return static_cast<std::intptr_t>(m_impl->socket);
}

void SocketEndpoint::Close() {
    m_impl->Close();
}

int StartSocketLibrary() {
    WSADATA data;
    return WSAStartup(MAKEWORD(2, 2), &data);
}

void EndSocketLibrary() {
    EndPartings();
    WSACleanup();
}

}  // namespace rvl::platform
