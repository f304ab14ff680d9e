#pragma once

#include <memory>

#include "net/message_window.h"
#include "net/socket_client.h"
#include "session/local_hub.h"
#include "session/service_connection.h"
#include "util/message.h"

namespace rvl {

/// The connection of a local process to the service: greets it and logs its user in each time it comes up,
/// and connects again every five seconds when it is down.
class LocalClient : public ServiceConnection {
 public:
    enum class Role { UI, Helper };

    explicit LocalClient(Role role, std::uint16_t port = kLocalPort) : m_role(role), m_port(port) {}
    ~LocalClient() override;

    void Connect(ConnectionOwner& owner) override;
    void Close() override;
    bool IsConnected() const override { return m_socket && m_socket->IsConnected(); }
    void SendData(const Text& command, const std::vector<Text>& params) override;

 private:
    void m_sck_ConnectionEstablished();
    void m_sck_ConnectionLost();
    void m_sck_MessageReceived(const Text& data);
    void Send(const Text& command, const std::vector<Text>& params);
    std::vector<Text> LoginParameters() const;

    /// Runs an action later but in order, outside the socket's event, which could not be entered again while
    /// a handler shows a modal window.
    void Later(std::function<void(ConnectionOwner&)> action);

    const Role m_role;
    const std::uint16_t m_port;
    ConnectionOwner* m_owner = nullptr;
    bool m_loggedIn = false;
    std::shared_ptr<MessageWindow> m_channel;
    std::unique_ptr<SocketClient> m_socket;
};

/// The message inside PASS_THROUGH: its first parameter is the command.
Message UnwrapPassThrough(Message message);

}  // namespace rvl
