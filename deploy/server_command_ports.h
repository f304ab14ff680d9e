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

/// The server's command to replace the client executable by a file that was transferred before.
class UpdateCommands {
 public:
    virtual ~UpdateCommands() = default;
    virtual void OnUpdatedBinary(const Text& path) = 0;  ///< the file exists
};

}  // namespace rvl
