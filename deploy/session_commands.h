#pragma once

#include "deploy/local_sessions.h"
#include "deploy/server_request.h"

namespace rvl {

/// The server's commands for the people at the workstation: they go on to switchboards and helpers, and
/// nothing is answered to the server.
class SessionCommands {
 public:
    explicit SessionCommands(LocalSessions& sessions) : m_sessions(sessions) {}

    void FrontendUpdated(const ServerRequest& request);  ///< FRONTEND_UPDATED
    void CloseFrontend(const ServerRequest& request);    ///< CLOSE_FRONTEND
    void StartFrontend(const ServerRequest& request);    ///< START_FRONTEND
    void DenyFrontend(const ServerRequest& request);     ///< DENY_FRONTEND

 private:
    /// Sends to a switchboard, when there is one: its client id may be any number.
    void Tell(std::int32_t switchboard, const Text& command, const std::vector<Text>& params);

    LocalSessions& m_sessions;
};

}  // namespace rvl
