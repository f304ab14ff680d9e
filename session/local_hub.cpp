#include "session/local_hub.h"

#include "runtime/log_file.h"
#include "util/message.h"
#include "util/text_functions.h"

namespace rvl {

LocalHub::LocalHub()
    : m_sckClients({[this](std::int16_t id) { m_sckClients_ClientConnected(id); },
                    [this](std::int16_t id) { m_sckClients_ClientDisconnected(id); },
                    [this](std::int16_t id, const Text& data) { m_sckClients_MessageReceived(id, data); }}) {}

void LocalHub::Open(std::uint16_t port) {
    m_sckClients.Init(port, "127.0.0.1");
}

void LocalHub::Close() {
    m_sckClients.Shutdown();
}

Text LocalHub::ClientIDString(std::int16_t clientId) const {
    const Text peer = m_sckClients.RemoteIP(clientId);
    return "#" + NumberText(clientId) + (peer.empty() ? Text() : "[" + peer + "]");
}

void LocalHub::SendToClient(std::int16_t clientId, const Text& context, const Text& command,
                            const Text& params) {
    const Text message = MakeMessage(context, command, params);
    MaybeLogProtocolData(message, true, ClientIDString(clientId));
    m_sckClients.SendData(clientId, message);
}

void LocalHub::m_sckClients_ClientConnected(std::int16_t clientId) {
    Log(ClientIDString(clientId) + ": Incoming Connection");
}

void LocalHub::m_sckClients_ClientDisconnected(std::int16_t clientId) {
    Log(ClientIDString(clientId) + ": Disconnected");
}

void LocalHub::m_sckClients_MessageReceived(std::int16_t clientId, const Text& data) {
    MaybeLogProtocolData(data, false, ClientIDString(clientId));
}

}  // namespace rvl
