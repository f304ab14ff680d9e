#include "platform/win32/socket_watch.h"

#include <utility>

namespace rvl::platform {

SocketWatch::SocketWatch(SOCKET socket, Handler handler)
    : m_socket(socket),
      m_handler(std::move(handler)),
      m_selection([this](WPARAM reporting, LPARAM event) { OnMessage(reporting, event); }) {
    Resume();
}

SocketWatch::~SocketWatch() {
    *m_alive = false;
    Pause();
}

void SocketWatch::Pause() {
    ReportNothing(m_socket);
}

void SocketWatch::Resume() {
    constexpr long kEverything = FD_READ | FD_WRITE | FD_OOB | FD_ACCEPT | FD_CONNECT | FD_CLOSE;
    WSAAsyncSelect(m_socket, NotificationWindow(), m_selection.Message(), kEverything);
}

void SocketWatch::Repeat(int event, int error) {
    PostMessageW(NotificationWindow(), m_selection.Message(), m_socket, MAKELPARAM(event, error));
}

void SocketWatch::ReportNothing(SOCKET socket) {
    WSAAsyncSelect(socket, NotificationWindow(), 0, 0);
}

/// A socket that a listener has just accepted may report to the listener's number: not of this one.
void SocketWatch::OnMessage(WPARAM socket, LPARAM event) {
    if (socket != m_socket) return;
    m_waiting.push_back(event);
    if (m_handling) return;
    m_handling = true;
    const auto alive = m_alive;
    while (*alive && !m_waiting.empty()) {
        const LPARAM next = m_waiting.front();
        m_waiting.pop_front();
        const Handler handler = m_handler;  // a copy: it may destroy this
        DispatchEvent([&] { handler(WSAGETSELECTEVENT(next), WSAGETSELECTERROR(next)); });
    }
    if (*alive) m_handling = false;
}

}  // namespace rvl::platform
