#include "platform/win32/socket_parting.h"

#include <list>

#include "platform/event_loop.h"
#include "platform/win32/socket_watch.h"

namespace rvl::platform {
namespace {

constexpr std::uint64_t kPatience = 2000;

/// Receives what nobody wants any more; false when the other end has closed. One that sends without end is
/// announced again.
bool Drain(SOCKET connection) {
    constexpr int kMostAtOnce = 16;
    char buffer[4096];
    for (int times = 0; times < kMostAtOnce; ++times) {
        const int count = ::recv(connection, buffer, sizeof buffer, 0);
        if (count == 0) return false;
        if (count == SOCKET_ERROR) return WSAGetLastError() == WSAEWOULDBLOCK;
    }
    return true;
}

/// Goes last of what belongs to a parting.
struct OwnedSocket {
    explicit OwnedSocket(SOCKET opened) : socket(opened) {}
    ~OwnedSocket() { closesocket(socket); }
    OwnedSocket(const OwnedSocket&) = delete;
    OwnedSocket& operator=(const OwnedSocket&) = delete;

    const SOCKET socket;
};

class Parting {
 public:
    explicit Parting(SOCKET connection)
        : m_connection(connection),
          m_watch(connection, [this](int event, int) { OnEvent(event); }),
          m_patience([this] { End(); }) {
        m_patience.After(kPatience);
    }

 private:
    void OnEvent(int event) {
        if (!Drain(m_connection.socket) || event == FD_CLOSE) End();
    }

    void End();

    OwnedSocket m_connection;
    SocketWatch m_watch;
    WakeUp m_patience;
};

std::list<Parting>& Partings() {
    static auto& partings = *new std::list<Parting>;  // the process may end before they do
    return partings;
}

void Parting::End() {
    Partings().remove_if([this](const Parting& one) { return &one == this; });
}

}  // namespace

void PartFrom(SOCKET connection) {
    if (::shutdown(connection, SD_SEND) == 0 && Drain(connection))
        Partings().emplace_back(connection);
    else
        closesocket(connection);
}

void EndPartings() {
    Partings().clear();
}

}  // namespace rvl::platform
