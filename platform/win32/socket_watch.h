#pragma once

#include <winsock2.h>

#include <deque>
#include <functional>
#include <memory>

#include "platform/win32/event_queue.h"

namespace rvl::platform {

/// Asynchronous selection of one socket: its network events (FD_READ ...) arrive as messages. They never
/// nest; those that come while one is handled wait for it.
class SocketWatch {
 public:
    using Handler = std::function<void(int event, int error)>;

    SocketWatch(SOCKET socket, Handler handler);
    ~SocketWatch();
    SocketWatch(const SocketWatch&) = delete;
    SocketWatch& operator=(const SocketWatch&) = delete;

    void Pause();
    void Resume();
    void Repeat(int event, int error);  ///< handled again later, in its turn

    static void ReportNothing(SOCKET socket);

 private:
    void OnMessage(WPARAM socket, LPARAM event);

    SOCKET m_socket;
    Handler m_handler;
    std::deque<LPARAM> m_waiting;
    bool m_handling = false;
    std::shared_ptr<bool> m_alive =
        std::make_shared<bool>(true);  ///< false for the handling that outlives this
    Notification m_selection;
};

}  // namespace rvl::platform
