#include "session/local_hub.h"

#include <algorithm>
#include <utility>

#include "net/yield.h"
#include "runtime/error_reporter.h"
#include "runtime/log_file.h"
#include "session/client_conn_helper.h"
#include "session/client_conn_ui.h"
#include "session/handshake.h"
#include "util/handle_error.h"
#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl {

LocalHub::LocalHub(Service& service)
    : m_service(service),
      m_sckClients(
          {[this](std::int16_t id) { m_sckClients_ClientConnected(id); },
           [this](std::int16_t id) { m_sckClients_ClientDisconnected(id); },
           [this](std::int16_t id, Text data) { m_sckClients_MessageReceived(id, std::move(data)); }}) {}

/// Closing releases the sessions, which speak to a whole hub.
LocalHub::~LocalHub() {
    Close();
}

void LocalHub::Open(std::uint16_t port) {
    m_sckClients.Init(port, "127.0.0.1");
}

void LocalHub::Close() {
    m_sckClients.Shutdown();
}

// Sessions

Text LocalHub::ClientIDString(std::int16_t clientId) const {
    const Text peer = m_sckClients.RemoteIP(clientId);
    return "#" + NumberText(clientId) + (peer.empty() ? Text() : "[" + peer + "]");
}

std::shared_ptr<ClientConn> LocalHub::ClientSession(std::int16_t clientId) const {
    return std::static_pointer_cast<ClientConn>(m_sckClients.Data(clientId));
}

template <typename Session>
std::shared_ptr<Session> LocalHub::SessionAs(std::int32_t clientId) const {
    if (clientId < 0 || clientId > MaxClientID()) return nullptr;
    return std::dynamic_pointer_cast<Session>(ClientSession(static_cast<std::int16_t>(clientId)));
}

/// The sessions that come and go meanwhile are met where they stand then.
template <typename Session, typename Action>
void LocalHub::ForEach(const Action& action) const {
    for (std::int32_t id = 0; id <= MaxClientID(); ++id)
        if (const auto session = SessionAs<Session>(id)) action(session);
}

bool LocalHub::HasSession(std::int32_t clientId) const {
    return SessionAs<ClientConn>(clientId) != nullptr;
}

bool LocalHub::IsHelper(std::int32_t clientId) const {
    return SessionAs<ClientConnHelper>(clientId) != nullptr;
}

bool LocalHub::IsSwitchboard(std::int32_t clientId) const {
    return SessionAs<ClientConnUI>(clientId) != nullptr;
}

std::shared_ptr<ClientConnHelper> LocalHub::FindHelperByUsername(const Text& username) const {
    for (std::int32_t id = 0; id <= MaxClientID(); ++id) {
        auto helper = SessionAs<ClientConnHelper>(id);
        if (helper && helper->Username() == username) return helper;
    }
    return nullptr;
}

/// Telling one lets events run: those who leave meanwhile are released at once, and not told any more.
void LocalHub::NotifyServerConnected(bool connected) {
    struct Known {
        std::uint64_t tick;
        std::weak_ptr<ClientConn> session;
    };
    std::vector<Known> known;
    ForEach<ClientConn>([&](const std::shared_ptr<ClientConn>& session) {
        if (!session->Username().empty()) known.push_back({session->ConnectedTick(), session});
    });
    std::stable_sort(known.begin(), known.end(),
                     [](const Known& one, const Known& other) { return one.tick > other.tick; });
    for (const Known& each : known)
        if (const auto session = each.session.lock()) NotifySession(*session, connected);
}

/// A session that fails must not keep the others from learning it.
void LocalHub::NotifySession(ClientConn& session, bool connected) const {
    try {
        connected ? session.OnServerConnect() : session.OnServerDisconnect();
    } catch (...) {
        HandleError("frmClientService.UpdateServerConnected");
    }
}

Text LocalHub::StartFrontend(std::int32_t helperId, std::int32_t frontendId) {
    const auto helper = SessionAs<ClientConnHelper>(helperId);
    return helper ? helper->StartFrontend(frontendId) : Text();
}

void LocalHub::VersionDeployed(std::int32_t frontendVersionId) {
    for (std::int32_t id = 0; id <= MaxClientID(); ++id) {
        if (const auto switchboard = SessionAs<ClientConnUI>(id))
            switchboard->SendFrontendList();
        else if (const auto helper = SessionAs<ClientConnHelper>(id))
            helper->AnnounceVersion(frontendVersionId);
    }
}

void LocalHub::VersionRemoved(std::int32_t frontendId) {
    ForEach<ClientConnUI>([&](const auto& switchboard) { switchboard->RemoveFrontendEntry(frontendId); });
}

// Sending

void LocalHub::SendToClientEx(std::int16_t clientId, const Text& context, const Text& command,
                              const Text& params) {
    const Text message = MakeMessage(context, command, params);
    MaybeLogProtocolData(message, true, ClientIDString(clientId));
    m_sckClients.SendData(clientId, message);
}

void LocalHub::SendToAllClientsEx(const Text& context, const Text& command, const Text& params) {
    const Text message = MakeMessage(context, command, params);
    MaybeLogProtocolData(message, true, "ALL");
    m_sckClients.SendDataAll(message);
}

void LocalHub::SendToAllHelpersEx(const Text& context, const Text& command, const Text& params) {
    const Text message = MakeMessage(context, command, params);
    MaybeLogProtocolData(message, true, "HELPERS");
    ForEach<ClientConnHelper>(
        [&](const auto& helper) { m_sckClients.SendData(helper->ClientID(), message); });
}

void LocalHub::SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) {
    m_service.SendToServer(context, command, params);
}

// Connections

void LocalHub::m_sckClients_ClientConnected(std::int16_t clientId) {
    Log(ClientIDString(clientId) + ": Incoming Connection");
    const Text update = m_service.PendingUpdatePath();
    if (update.empty()) return;
    SendToClientEx(clientId, "", "UPDATED_BINARY", update);
    const std::uint16_t newcomer = m_sckClients.RemotePort(clientId);
    YieldToPendingEvents();  // the message leaves
    // The newcomer may have left by itself, and another one may have its place.
    if (newcomer == m_sckClients.RemotePort(clientId))
        KillConnection(clientId, "", "No new connections while updating", false);
}

void LocalHub::m_sckClients_ClientDisconnected(std::int16_t clientId) {
    Log(ClientIDString(clientId) + ": Disconnected");
    CleanupForClient();
}

void LocalHub::KillConnection(std::int16_t clientId, const Text&, const Text& reason, bool) {
    if (!reason.empty()) Log(ClientIDString(clientId) + ": Closing connection: " + reason);
    m_sckClients.KillClient(clientId);
    CleanupForClient();  // an update that waits for the last connection must not count this one
}

void LocalHub::CleanupForClient() {
    m_service.MaybeUpgradeNow();
}

// Messages

void LocalHub::m_sckClients_MessageReceived(std::int16_t clientId, Text data) {
    Message message;
    try {
        MaybeLogProtocolData(data, false, ClientIDString(clientId));
        message = SplitMessage(std::move(data));
        Route(clientId, message);
    } catch (...) {
        ReportError(message);
    }
}

void LocalHub::Route(std::int16_t clientId, const Message& message) {
    const auto session = ClientSession(clientId);  // held here: its connection may end meanwhile
    if (!session)
        Greet(clientId, message);
    else if (message.command == "PASS_THROUGH")
        PassThrough(clientId, message);
    else
        session->IncomingMessage(message.context, message.command, message.params);
}

void LocalHub::Greet(std::int16_t clientId, const Message& message) {
    const Handshake handshake = ReadHandshake(message);
    if (!handshake.rejection.empty())
        return KillConnection(clientId, message.context, handshake.rejection, false);
    SessionHost& host = *this;
    std::shared_ptr<ClientConn> session;
    if (handshake.remoteType == Handshake::RemoteType::UI)
        session = std::make_shared<ClientConnUI>(host);
    else
        session = std::make_shared<ClientConnHelper>(host);
    m_sckClients.SetData(clientId, session);
    session->Init(clientId);
}

/// The server answers in the same context; the answer finds its way back by the client id in it.
void LocalHub::PassThrough(std::int16_t clientId, const Message& message) {
    if (!IsServerConnected()) {
        SendToClientEx(clientId, message.context, "GENERAL_ERROR",
                       JoinParameters({"87", "Server not connected", message.command, message.params}));
        return;
    }
    const std::size_t end = std::min(message.params.find('\0'), message.params.size());
    const Text inner = message.params.substr(std::min(end + 1, message.params.size()));
    SendToServer(NumberText(clientId) + "#" + message.context, UpperCase(message.params.substr(0, end)),
                 {inner});
}

/// The connection stays open: the next message may fare better.
void LocalHub::ReportError(const Message& message) {
    constexpr const char* kProcedure = "frmClientService.m_sckClients_MessageReceived";
    const ErrorRecord record = CurrentError();
    HandleError(kProcedure);
    SendToServer(message.context, "GENERAL_ERROR",
                 {NumberText(record.Number), Text("Error in ") + kProcedure + ": " + ErrorText(record),
                  message.command, message.params});
}

}  // namespace rvl
