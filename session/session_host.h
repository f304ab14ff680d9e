#pragma once

#include <memory>
#include <vector>

#include "deploy/local_database.h"
#include "session/client_conn.h"

namespace rvl {

class ClientConnHelper;

/// What the service offers to the sessions of its local connections. Client ids are the slots of the hub.
class SessionHost {
 public:
    virtual ~SessionHost() = default;

    virtual Text ClientIDString(std::int16_t clientId) const = 0;
    virtual std::int16_t MaxClientID() const = 0;
    virtual std::shared_ptr<ClientConn> ClientSession(std::int16_t clientId) const = 0;
    virtual std::shared_ptr<ClientConnHelper> FindHelperByUsername(const Text& username) const = 0;

    virtual void SendToClientEx(std::int16_t clientId, const Text& context, const Text& command,
                                const Text& params) = 0;
    /// The peer learns nothing but the closed connection; the reason is logged.
    virtual void KillConnection(std::int16_t clientId, const Text& context, const Text& reason,
                                bool sendReasonToRemote) = 0;

    virtual bool IsServerConnected() const = 0;
    virtual void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) = 0;
    virtual void SendCurrentFrontends() = 0;
    virtual LocalDatabase& Database() = 0;
};

}  // namespace rvl
