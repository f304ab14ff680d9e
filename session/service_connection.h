#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl {

/// Whom a local process's connection tells what happens.
class ConnectionOwner {
 public:
    virtual ~ConnectionOwner() = default;
    virtual void OnConnected() {}         ///< HELLO and LOGIN are sent
    virtual void OnConnectionLost() = 0;  ///< it connects again by itself
    virtual void OnConnectFailed() {}     ///< an attempt came to nothing; it goes on trying

    /// A message of the service; what was passed through is unwrapped. A handler may show modal windows: the
    /// messages behind it are then handled inside it.
    virtual void OnMessage(const Text& command, const std::vector<Text>& params) = 0;
};

/// The connection of a helper, switchboard or start-front-end process to the service of its workstation.
class ServiceConnection {
 public:
    virtual ~ServiceConnection() = default;
    virtual void Connect(ConnectionOwner& owner) = 0;
    virtual void Close() = 0;  ///< for good; nothing is told any more
    virtual bool IsConnected() const = 0;

    /// With an empty context. Without a connection the message is logged and dropped.
    virtual void SendData(const Text& command, const std::vector<Text>& params) = 0;
};

}  // namespace rvl
