#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace rvl::platform {

enum class Protocol { Tcp = 0, Udp = 1 };

/// Readiness of an endpoint, with the numbers that asynchronous socket selection gives them.
enum class SocketNotification {
    Readable = 1,
    Writable = 2,
    OutOfBand = 4,
    ConnectionPending = 8,
    ConnectFinished = 16,
    Closed = 32,
};

inline constexpr int kErrorWouldBlock = 10035;
inline constexpr std::intptr_t kNoSocket = -1;

/// An IPv4 address (network byte order) and a port (host byte order).
struct Ipv4Endpoint {
    std::uint32_t address = 0;
    std::uint16_t port = 0;
};

/// One non-blocking IPv4 socket whose readiness arrives on the event loop. Every operation returns 0 or a
/// socket error number of the 10004...11031 range, the same on every system.
class SocketEndpoint {
 public:
    /// The error is that of a failed connect (ConnectFinished) or of a reset connection (Closed), else 0.
    /// What the logic relies on, on every system: notifications of one endpoint never nest, those that come
    /// while one is being handled wait for it; Closed comes only after everything was received; what was
    /// under way for a closed endpoint never reaches another one.
    using Notify = std::function<void(SocketNotification, int error)>;

    SocketEndpoint();
    ~SocketEndpoint();
    SocketEndpoint(const SocketEndpoint&) = delete;
    SocketEndpoint& operator=(const SocketEndpoint&) = delete;

    int Open(Protocol protocol);
    int Bind(Ipv4Endpoint local);
    int EnableBroadcast();
    int Listen(int backlog);

    /// Starts a connect; 0 means that ConnectFinished follows.
    int Connect(Ipv4Endpoint remote);

    /// Takes the pending connection of the listener with handle `listener`.
    int Accept(std::intptr_t listener, Ipv4Endpoint& remote);

    /// Begins to notify. Writable is notified once after a Send that would have blocked.
    void Watch(Notify notify);

    /// moreFollows is a hint that the next Send comes at once, so that segments can be filled.
    int Send(const char* data, std::size_t size, bool moreFollows, std::size_t& sent);
    int Receive(char* buffer, std::size_t size, std::size_t& received);
    int SendTo(Ipv4Endpoint remote, const char* data, std::size_t size);
    int ReceiveFrom(char* buffer, std::size_t size, std::size_t& received, Ipv4Endpoint& remote);

    int LocalPort(std::uint16_t& port) const;
    std::intptr_t Handle() const;
    void Close();

 private:
    struct Impl;
    std::shared_ptr<Impl> m_impl;
};

/// Starts and ends the socket library; 0 or its error number.
int StartSocketLibrary();
void EndSocketLibrary();

}  // namespace rvl::platform
