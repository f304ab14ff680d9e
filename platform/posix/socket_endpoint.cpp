#include "platform/socket_endpoint.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

#include "platform/event_loop.h"
#include "platform/posix/errno_mapping.h"
#include "platform/posix/socket_watch.h"

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

int LastError() {
    return SocketErrorFromErrno(errno);
}

int ResultOf(int returned) {
    return returned < 0 ? LastError() : 0;
}

template <typename T>
int SetOption(int descriptor, int name, T value) {
    return ResultOf(setsockopt(descriptor, SOL_SOCKET, name, &value, sizeof value));
}

/// Kept free so that a pending connection can be turned away when the process has no descriptor left; it
/// would otherwise keep its listener readable for ever.
int& SpareDescriptor() {
    static int spare = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    return spare;
}

/// The last accept failed for want of something: its connection may still be pending.
bool& AcceptFailed() {
    static bool failed = false;
    return failed;
}

void TurnAway(int listener) {
    ::close(SpareDescriptor());
    ::close(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    SpareDescriptor() = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

constexpr GIOCondition Conditions(int bits) {
    return static_cast<GIOCondition>(bits);
}

constexpr int kErrorInterrupted = 10004;
constexpr int kReadInterest = G_IO_IN | G_IO_HUP | G_IO_ERR;

}  // namespace

/// Shared with the watch's handler, so that an endpoint may close or destroy itself while it is notified.
struct SocketEndpoint::Impl : std::enable_shared_from_this<SocketEndpoint::Impl> {
    int descriptor = -1;
    Protocol protocol = Protocol::Tcp;
    bool connecting = false;
    bool listening = false;
    bool writableWanted = false;
    int connectError = 0;  ///< of a connect that failed at once
    bool lastReceiveFilled = false;
    bool streamEnded = false;
    int streamError = 0;
    Notify notify;
    std::unique_ptr<SocketWatch> watch;
    std::unique_ptr<WakeUp> rest;  ///< of a listener that could not accept

    ~Impl() { Close(); }

    void Close() {
        watch.reset();
        rest.reset();
        notify = nullptr;
        if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
        connecting = listening = writableWanted = streamEnded = false;
    }

    GIOCondition Interest() const {
        if (connecting) return Conditions(G_IO_OUT | G_IO_HUP | G_IO_ERR);
        return Conditions(kReadInterest | (writableWanted ? G_IO_OUT : 0));
    }

    void UpdateInterest() {
        if (watch) watch->SetConditions(Interest());
    }

    void Raise(SocketNotification notification, int error = 0) {
        const Notify handler = notify;  // a copy: the handler may close the endpoint
        if (handler) handler(notification, error);
    }

    void OnReady(GIOCondition ready) {
        const auto alive = shared_from_this();
        if (connecting) return OnConnectFinished();
        if ((ready & G_IO_OUT) != 0 && writableWanted) {
            writableWanted = false;
            UpdateInterest();
            Raise(SocketNotification::Writable);
        }
        if (descriptor >= 0 && (ready & kReadInterest) != 0) OnInput();
    }

    void OnConnectFinished() {
        int error = 0;
        socklen_t size = sizeof error;
        getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size);
        connecting = false;
        UpdateInterest();
        const int known = std::exchange(connectError, 0);
        Raise(SocketNotification::ConnectFinished, known != 0 ? known : SocketErrorFromErrno(error));
    }

    /// A connection that cannot be accepted for now stays pending: the listener rests instead of spinning.
    void OnConnectionPending() {
        constexpr std::uint64_t kRest = 1000;
        AcceptFailed() = false;
        Raise(SocketNotification::ConnectionPending);
        if (!AcceptFailed() || !watch) return;
        watch->SetConditions(Conditions(0));
        rest = std::make_unique<WakeUp>([this] { UpdateInterest(); });
        rest->After(kRest);
    }

    void OnInput() {
        if (listening) return OnConnectionPending();
        // Readable again and again while whole buffers come in: asking poll in between would cost as much as
        // the data. The bound leaves the other sources their turn.
        constexpr int kMostInARow = 32;
        for (int round = 0; round < kMostInARow && descriptor >= 0; ++round) {
            lastReceiveFilled = false;
            Raise(SocketNotification::Readable);
            if (!lastReceiveFilled) break;
        }
        if (descriptor >= 0 && streamEnded) {
            watch.reset();  // an ended stream stays readable for ever
            Raise(SocketNotification::Closed, std::exchange(streamError, 0));
        }
    }

    /// Notes what a receive told about the stream; readiness alone does not tell data from its end.
    void AfterReceive(ssize_t count, std::size_t size, int error) {
        lastReceiveFilled = count > 0 && static_cast<std::size_t>(count) == size;
        if (protocol != Protocol::Tcp || size == 0 || count > 0) return;
        if (count < 0 && (error == kErrorWouldBlock || error == kErrorInterrupted)) return;
        streamEnded = true;
        streamError = error;
    }

    int Adopt(int opened, Protocol kind) {
        if (opened < 0) return LastError();
        Close();
        descriptor = opened;
        protocol = kind;
        // Requests and replies alternate: waiting to fill a segment would cost a round-trip each time.
        const int noDelay = 1;
        if (kind == Protocol::Tcp) setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof noDelay);
        return 0;
    }
};

SocketEndpoint::SocketEndpoint() : m_impl(std::make_shared<Impl>()) {}
SocketEndpoint::~SocketEndpoint() {
    m_impl->Close();
}

int SocketEndpoint::Open(Protocol protocol) {
    const int type = protocol == Protocol::Tcp ? SOCK_STREAM : SOCK_DGRAM;
    return m_impl->Adopt(::socket(AF_INET, type | SOCK_NONBLOCK | SOCK_CLOEXEC, 0), protocol);
}

int SocketEndpoint::Bind(Ipv4Endpoint local) {
    // A restarted listener must not wait for the connections of its predecessor to time out.
    if (m_impl->protocol == Protocol::Tcp) SetOption(m_impl->descriptor, SO_REUSEADDR, 1);
    const sockaddr_in address = ToSockaddr(local);
    return ResultOf(::bind(m_impl->descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
}

int SocketEndpoint::EnableBroadcast() {
    return SetOption(m_impl->descriptor, SO_BROADCAST, 1);
}

int SocketEndpoint::Listen(int backlog) {
    m_impl->listening = true;
    SpareDescriptor();
    return ResultOf(::listen(m_impl->descriptor, backlog));
}

int SocketEndpoint::Connect(Ipv4Endpoint remote) {
    const sockaddr_in address = ToSockaddr(remote);
    m_impl->connecting = true;
    m_impl->UpdateInterest();
    const int result =
        ResultOf(::connect(m_impl->descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    constexpr int kInProgress = 10036, kRefused = 10061;
    if (result == kRefused) m_impl->connectError = result;  // reported like a refusal that comes later
    return result == kInProgress || result == kRefused ? 0 : result;
}

int SocketEndpoint::Accept(std::intptr_t listener, Ipv4Endpoint& remote) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    const int accepted = ::accept4(static_cast<int>(listener), reinterpret_cast<sockaddr*>(&address), &size,
                                   SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (accepted < 0 && (errno == EMFILE || errno == ENFILE)) {
        TurnAway(static_cast<int>(listener));
        errno = EMFILE;
    }
    AcceptFailed() = accepted < 0 && errno != EAGAIN && errno != ECONNABORTED;
    const int result = m_impl->Adopt(accepted, Protocol::Tcp);
    if (result == 0) remote = FromSockaddr(address);
    return result;
}

void SocketEndpoint::Watch(Notify notify) {
    m_impl->notify = std::move(notify);
    m_impl->watch =
        std::make_unique<SocketWatch>(m_impl->descriptor, m_impl->Interest(),
                                      [impl = m_impl.get()](GIOCondition ready) { impl->OnReady(ready); });
}

int SocketEndpoint::Send(const char* data, std::size_t size, bool moreFollows, std::size_t& sent) {
    const int flags = MSG_NOSIGNAL | (moreFollows ? MSG_MORE : 0);
    const ssize_t count = ::send(m_impl->descriptor, data, size, flags);
    sent = count > 0 ? static_cast<std::size_t>(count) : 0;
    if (count >= 0) return 0;
    const int error = LastError();
    if (error == kErrorWouldBlock && !m_impl->writableWanted) {
        m_impl->writableWanted = true;
        m_impl->UpdateInterest();
    }
    return error;
}

int SocketEndpoint::Receive(char* buffer, std::size_t size, std::size_t& received) {
    const ssize_t count = ::recv(m_impl->descriptor, buffer, size, 0);
    const int error = count < 0 ? LastError() : 0;
    received = count > 0 ? static_cast<std::size_t>(count) : 0;
    m_impl->AfterReceive(count, size, error);
    return error;
}

int SocketEndpoint::SendTo(Ipv4Endpoint remote, const char* data, std::size_t size) {
    const sockaddr_in address = ToSockaddr(remote);
    const ssize_t count = ::sendto(m_impl->descriptor, data, size, MSG_NOSIGNAL,
                                   reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return count < 0 ? LastError() : 0;
}

int SocketEndpoint::ReceiveFrom(char* buffer, std::size_t size, std::size_t& received, Ipv4Endpoint& remote) {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    const ssize_t count =
        ::recvfrom(m_impl->descriptor, buffer, size, 0, reinterpret_cast<sockaddr*>(&address), &length);
    received = count > 0 ? static_cast<std::size_t>(count) : 0;
    if (count < 0) return LastError();
    remote = FromSockaddr(address);
    return 0;
}

int SocketEndpoint::LocalPort(std::uint16_t& port) const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    const int result =
        ResultOf(::getsockname(m_impl->descriptor, reinterpret_cast<sockaddr*>(&address), &size));
    if (result == 0) port = ntohs(address.sin_port);
    return result;
}

std::intptr_t SocketEndpoint::Handle() const {
    return m_impl->descriptor;
}

void SocketEndpoint::Close() {
    m_impl->Close();
}

int StartSocketLibrary() {
    return 0;
}
void EndSocketLibrary() {}

}  // namespace rvl::platform
