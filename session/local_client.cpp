#include "session/local_client.h"

#include <utility>

#include "platform/identity.h"
#include "runtime/folder_paths.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "util/digest.h"
#include "util/handle_error.h"
#include "util/parameters.h"

namespace rvl {
namespace {

constexpr std::int32_t kRetryInterval = 5000;

}  // namespace

LocalClient::~LocalClient() {
    LocalClient::Close();
}

void LocalClient::Connect(ConnectionOwner& owner) try {
    m_owner = &owner;
    m_channel = MessageWindow::Create("LocalClient");
    m_socket = std::make_unique<SocketClient>(
        SocketClient::Events{[this](const Text& data) { m_sck_MessageReceived(data); },
                             [this] { m_sck_ConnectionEstablished(); }, [this] { m_sck_ConnectionLost(); },
                             [this] { Later([](ConnectionOwner& told) { told.OnConnectFailed(); }); }});
    m_socket->Init("127.0.0.1", m_port, kRetryInterval);
} catch (...) {
    HandleError("LocalClient.Connect");
}

void LocalClient::Close() {
    m_owner = nullptr;
    m_channel.reset();
    m_loggedIn = false;
    if (m_socket) m_socket->Reset();
}

/// Sending lets events run: nothing may come between HELLO and LOGIN.
void LocalClient::SendData(const Text& command, const std::vector<Text>& params) try {
    if (!m_socket || (m_role == Role::Helper && !m_loggedIn)) return Log("Sending message while no socket");
    if (!m_loggedIn) return Log("Sending message while disconnected");
    Send(command, params);
} catch (...) {
    HandleError("LocalClient.SendData");
}

void LocalClient::Send(const Text& command, const std::vector<Text>& params) {
    const Text data = MakeMessage("", command, JoinParameters(params));
    MaybeLogProtocolData(data, true);
    m_socket->SendData(data);
}

void LocalClient::m_sck_ConnectionEstablished() {
    Log("Connection Established");
    const std::vector<Text> login = LoginParameters();
    Send("HELLO", {"RVL", m_role == Role::Helper ? "HELPER" : "UI", VersionString()});
    m_loggedIn = true;
    Send("LOGIN", login);
    if (m_owner != nullptr) m_owner->OnConnected();
}

void LocalClient::m_sck_ConnectionLost() {
    m_loggedIn = false;
    Later([](ConnectionOwner& told) { told.OnConnectionLost(); });
}

std::vector<Text> LocalClient::LoginParameters() const {
    const Text user = FullUsername();
    std::vector<Text> login = {GenerateRVLChecksum(user), user, platform::AccountFullName(),
                               UserLocalSettingsAppDataPath()};
    if (m_role == Role::Helper) {
        login.push_back(DesktopPath());
        login.push_back(StartMenuProgramsPath());
    }
    return login;
}

void LocalClient::m_sck_MessageReceived(const Text& data) {
    MaybeLogProtocolData(data, false);
    const Message message = UnwrapPassThrough(SplitMessage(data));
    Later([command = message.command, params = SplitParameters(message.params)](ConnectionOwner& told) {
        told.OnMessage(command, params);
    });
}

void LocalClient::Later(std::function<void(ConnectionOwner&)> action) {
    if (!m_channel) return;
    m_channel->Post([this, action = std::move(action)] {
        if (m_owner != nullptr) action(*m_owner);
    });
}

Message UnwrapPassThrough(Message message) {
    while (message.command == "PASS_THROUGH")
        message = SplitMessage(message.context + Text(1, '\0') + message.params);
    return message;
}

}  // namespace rvl
