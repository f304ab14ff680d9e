#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// The local sessions that the server's messages can be addressed to, by client ids as they come from the
/// server: any number.
class LocalSessions {
 public:
    virtual ~LocalSessions() = default;
    virtual bool HasSession(std::int32_t clientId) const = 0;
    virtual bool IsHelper(std::int32_t clientId) const = 0;
    virtual bool IsSwitchboard(std::int32_t clientId) const = 0;

    /// The parameter string is passed on unchanged; nothing happens when there is no such connection.
    virtual void SendToClientEx(std::int16_t clientId, const Text& context, const Text& command,
                                const Text& params) = 0;
    virtual void SendToAllClientsEx(const Text& context, const Text& command, const Text& params) = 0;

    /// Asks a helper to start a front end; the result is empty, or why it cannot be started.
    virtual Text StartFrontend(std::int32_t helperId, std::int32_t frontendId) = 0;
};

}  // namespace rvl
