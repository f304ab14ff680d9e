#include "session/local_session.h"

#include "runtime/log_file.h"
#include "util/digest.h"
#include "util/handle_error.h"
#include "util/parameters.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {

LocalSession::~LocalSession() {
    try {
        if (m_loggedIn && m_host.IsServerConnected())
            m_host.SendToServer("", "DISCONNECT", {m_names.remoteType, NumberText(m_clientId)});
    } catch (...) {
        HandleError("LocalSession.Release");
    }
}

/// Sending lets events run: the connection may be lost, and its slot taken by another one, any time.
void LocalSession::SendData(const Text& context, const Text& command, const std::vector<Text>& params) {
    if (m_host.ClientSession(m_clientId).get() != this) return;
    m_host.SendToClientEx(m_clientId, context, command, JoinParameters(params));
}

void LocalSession::Close(const Text& context, const Text& reason) {
    m_host.KillConnection(m_clientId, context, reason, false);
}

void LocalSession::IncomingMessage(const Text& context, const Text& command, const Text& params) try {
    if (command == "LOGIN") return LogIn(context, SplitParameters(params));
    if (!m_loggedIn) return Close(context, "Must login first");
    if (!Dispatch(context, command, params))
        Log(LogPrefix() + "Unknown " + m_names.inLog + " message: " + command);
} catch (...) {
    HandleErrorAndReRaise(m_names.ofClass + ".IncomingMessage");
}

bool LocalSession::IsProven(const Parameters& params) const {
    return params.size() >= LoginParameters() && !params[1].empty() &&
           params[0] == GenerateRVLChecksum(params[1]);
}

void LocalSession::LogIn(const Text& context, const Parameters& params) {
    if (!IsProven(params)) return Close(context, "Invalid login");
    m_username = params[1];
    m_displayName = params[2];
    m_localAppDataPath = params[3];
    Log(LogPrefix() + m_names.inLog + " connected: " + m_username);
    m_loggedIn = true;
    m_connectedTick = GetTickCountEx();
    OnLogin(params);
}

void LocalSession::SendConnect() const {
    const auto since = static_cast<std::int64_t>(GetTickCountEx() - m_connectedTick);
    m_host.SendToServer("", "CONNECT",
                        {m_names.remoteType, NumberText(m_clientId), NumberText(since), m_username,
                         m_displayName, m_localAppDataPath});
}

}  // namespace rvl
