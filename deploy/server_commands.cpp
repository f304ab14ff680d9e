#include "deploy/server_commands.h"

#include <utility>

#include "deploy/access_commands.h"
#include "deploy/file_commands.h"
#include "deploy/shortcut_command.h"
#include "runtime/error_reporter.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {

ServerCommands::ServerCommands(Ports ports) : m_ports(ports), m_sessionCommands(ports.sessions) {
    AddLinkCommands();
    AddFileCommands();
    AddAccessCommands();
    AddFrontendCommands();
    AddSessionCommands();
}

void ServerCommands::AddLinkCommands() {
    LinkCommands& link = m_ports.link;
    m_commands["PONG"] = {0, [&link](const ServerRequest&) { link.OnPong(); }};
    m_commands["HELLO"] = {1, [&link](const ServerRequest& request) { link.OnHello(request.Parameters()); }};
    m_commands["LOGIN_OK"] = {0, [&link](const ServerRequest&) { link.OnLoginOk(); }};
    m_commands["SET_SERVER"] = {
        0, [&link](const ServerRequest& request) { link.OnSetServer(request.Parameters()); }};
    m_commands["FIND_SERVER_AGAIN"] = {0, [&link](const ServerRequest&) { link.OnFindServerAgain(); }};
}

void ServerCommands::AddFileCommands() {
    FileTransfers& transfers = m_ports.transfers;
    m_commands["FILE_BEGIN"] = {3, [&transfers](const ServerRequest& request) {
                                    transfers.Begin(request.Context(), request.RawParameters());
                                }};
    m_commands["CREATE_DIRECTORY"] = {1, CreateDirectoryCommand};
    m_commands["MKDIR"] = {1, MakeDirectoryCommand};
    m_commands["GET_FILE_INFO"] = {2, GetFileInfoCommand};
    m_commands["CREATE_SHORTCUT"] = {4, CreateShortcutCommand};
    m_commands["GET_FILE_MD5"] = {1, GetFileMd5Command};
}

void ServerCommands::AddAccessCommands() {
    m_commands["ACL_REMOVE_ALL"] = {2, RemoveAllAccessCommand};
    m_commands["ACL_ADD"] = {3, AddAccessCommand};
    m_commands["ACL_OWNER"] = {2, SetOwnerCommand};
}

void ServerCommands::AddFrontendCommands() {
    FrontendCommands& frontends = m_ports.frontends;
    m_commands["FRONTEND_ADD"] = {14, [&](const ServerRequest& request) { frontends.Add(request); }};
    m_commands["FRONTEND_FILE_ADD"] = {3, [&](const ServerRequest& request) { frontends.AddFile(request); }};
    m_commands["FRONTEND_DEPLOY"] = {2, [&](const ServerRequest& request) { frontends.Deploy(request); }};
    m_commands["FRONTEND_MAKE_AVAILABLE"] = {
        2, [&](const ServerRequest& request) { frontends.MakeAvailable(request); }};
    m_commands["FRONTEND_REMOVE"] = {1, [&](const ServerRequest& request) { frontends.Remove(request); }};
    m_commands["UPDATED_BINARY"] = {1, [this](const ServerRequest& request) { UpdatedBinary(request); }};
}

void ServerCommands::AddSessionCommands() {
    SessionCommands& sessions = m_sessionCommands;
    m_commands["FRONTEND_UPDATED"] = {
        0, [&](const ServerRequest& request) { sessions.FrontendUpdated(request); }};
    m_commands["CLOSE_FRONTEND"] = {7,
                                    [&](const ServerRequest& request) { sessions.CloseFrontend(request); }};
    m_commands["START_FRONTEND"] = {4,
                                    [&](const ServerRequest& request) { sessions.StartFrontend(request); }};
    m_commands["DENY_FRONTEND"] = {6, [&](const ServerRequest& request) { sessions.DenyFrontend(request); }};
}

void ServerCommands::UpdatedBinary(const ServerRequest& request) {
    const Text& path = request.Parameters()[0];
    FileExists(path) ? m_ports.update.OnUpdatedBinary(path) : request.RefuseAsInvalid();
}

void ServerCommands::m_sckServer_MessageReceived(Text data) {
    if (data.empty()) return;  // the server's keep-alive
    Message message;
    try {
        MaybeLogProtocolData(data, false);
        if (RouteToTransfer(ViewMessage(data))) return;
        message = SplitMessage(std::move(data));
        Route(message);
    } catch (...) {
        const ErrorRecord record = CurrentError();
        HandleError("frmClientService.m_sckServer_MessageReceived");
        ServerRequest(std::move(message), m_ports.replies)
            .Fail(record.Number,
                  "Error in frmClientService.m_sckServer_MessageReceived: " + ErrorText(record));
    }
}

void ServerCommands::Route(Message& message) {
    if (RouteToSession(message)) return;
    Dispatch(ServerRequest(message, m_ports.replies));
}

/// File content is handed on where it stands: it is most of what a server sends.
bool ServerCommands::RouteToTransfer(const MessageView& message) {
    if (!m_ports.transfers.IsActive(message.context)) return false;
    m_ports.transfers.Continue(message.command, message.params);
    return true;
}

/// A context "id#inner" addresses a local session, or nobody when the slot holds none. Without an id before
/// the "#" the message stays the service's own, under the inner context.
bool ServerCommands::RouteToSession(Message& message) {
    const std::size_t separator = message.context.find('#');
    if (separator == Text::npos) return false;
    const std::int32_t id = ParseLongOr(TextView(message.context).substr(0, separator), -1);
    message.context.erase(0, separator + 1);
    if (id < 0) return false;
    if (m_ports.sessions.HasSession(id))
        m_ports.sessions.SendToClientEx(static_cast<std::int16_t>(id), message.context, message.command,
                                        message.params);
    return true;
}

void ServerCommands::Dispatch(const ServerRequest& request) {
    const auto found = m_commands.find(request.Command());
    if (found == m_commands.end()) return Log("Unknown server message: " + request.Command());
    if (request.Parameters().size() < found->second.required) return request.RefuseAsInvalid();
    found->second.handle(request);
}

}  // namespace rvl
