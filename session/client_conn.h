#pragma once

#include <cstdint>

#include "net/socket_server.h"

namespace rvl {

/// The service's side of one local connection whose HELLO was accepted.
class ClientConn : public ClientData {
 public:
    virtual void Init(std::int16_t clientId) = 0;

    /// One message; the parameters are joined by NUL.
    virtual void IncomingMessage(const Text& context, const Text& command, const Text& params) = 0;

    virtual Text Username() const = 0;  ///< DOMAIN\user, empty before the login
    virtual void OnServerConnect() = 0;
    virtual void OnServerDisconnect() = 0;
    virtual std::uint64_t ConnectedTick() const = 0;  ///< milliseconds, of the login
};

}  // namespace rvl
