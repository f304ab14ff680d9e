#pragma once

#include <cstddef>
#include <functional>
#include <map>

#include "deploy/frontend_commands.h"
#include "deploy/local_sessions.h"
#include "deploy/server_command_ports.h"
#include "deploy/server_request.h"
#include "deploy/session_commands.h"
#include "net/file_transfers.h"

namespace rvl {

/// Every message of the deployment server enters here: it is logged and goes to the file transfer or the
/// local session that its context names, or else to the command's handler. Unknown commands are logged and
/// not answered; an error in one message is answered and the next message is served.
class ServerCommands {
 public:
    struct Ports {
        ServerReplies& replies;
        LinkCommands& link;
        FileTransfers& transfers;
        LocalSessions& sessions;
        FrontendCommands& frontends;
        UpdateCommands& update;
    };

    explicit ServerCommands(Ports ports);

    void m_sckServer_MessageReceived(Text data);

 private:
    using Handler = std::function<void(const ServerRequest&)>;
    struct Command {
        std::size_t required;  ///< parameters
        Handler handle;
    };

    void AddLinkCommands();
    void AddFileCommands();
    void AddAccessCommands();
    void AddFrontendCommands();
    void AddSessionCommands();
    void UpdatedBinary(const ServerRequest& request);
    void Route(Message& message);
    bool RouteToTransfer(const MessageView& message);
    bool RouteToSession(Message& message);
    void Dispatch(const ServerRequest& request);

    Ports m_ports;
    SessionCommands m_sessionCommands;
    std::map<Text, Command, std::less<>> m_commands;
};

}  // namespace rvl
