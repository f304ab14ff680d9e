#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl {

/// Where replies to the deployment server go.
class ServerReplies {
 public:
    virtual ~ServerReplies() = default;
    virtual void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) = 0;
};

/// The server's commands that concern the link itself.
class LinkCommands {
 public:
    virtual ~LinkCommands() = default;
    virtual void OnHello(const std::vector<Text>& params) = 0;
    virtual void OnLoginOk() = 0;
    virtual void OnPong() = 0;
    virtual void OnSetServer(const std::vector<Text>& params) = 0;
    virtual void OnFindServerAgain() = 0;
};

/// The local sessions that the server's messages can be addressed to.
class LocalSessions {
 public:
    virtual ~LocalSessions() = default;
    virtual std::int16_t MaxClientID() const = 0;
    virtual bool HasSession(std::int16_t clientId) const = 0;
    /// The parameter string is passed on unchanged.
    virtual void SendToClient(std::int16_t clientId, const Text& context, const Text& command,
                              const Text& params) = 0;
};

}  // namespace rvl
