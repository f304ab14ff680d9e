#include "net/server_link.h"

#include <utility>

#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "util/digest.h"
#include "util/handle_error.h"
#include "util/message.h"
#include "util/parameters.h"
#include "util/random_text.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr std::uint32_t kInitDelay = 1000;
constexpr std::uint32_t kKeepAliveInterval = 5000;
constexpr std::int64_t kPingInterval = 300000;
constexpr std::int64_t kPongTimeout = 30000;
constexpr std::size_t kNonceLength = 16;

// The first ping of a session falls somewhere in the first 225 seconds, so that the workstations of an office
// that came up together do not ping together.
constexpr std::int32_t kEarliestLastPing = 75000;
constexpr std::int32_t kLatestLastPing = 300000;

}  // namespace

ServerLink::ServerLink(Owner& owner)
    : m_owner(owner),
      m_locator(*this),
      m_sckServer({[this](Text message) { m_owner.ServerMessageReceived(std::move(message)); },
                   [this] { m_sckServer_ConnectionEstablished(); }, [this] { m_sckServer_ConnectionLost(); },
                   [] {}}),
      m_tmrInit([this] { tmrInit_Timer(); }),
      m_tmrKeepAlive([this] { tmrKeepAlive_Timer(); }) {
    m_tmrInit.SetInterval(kInitDelay);
    m_tmrKeepAlive.SetInterval(kKeepAliveInterval);
    m_tmrKeepAlive.SetEnabled(true);
}

void ServerLink::StartLocating() {
    m_tmrInit.SetEnabled(true);
}

void ServerLink::tmrInit_Timer() {
    m_tmrInit.SetEnabled(false);
    m_domainName = DomainName();
    m_locator.LocateServer();
}

void ServerLink::Shutdown() {
    m_tmrInit.SetEnabled(false);
    m_tmrKeepAlive.SetEnabled(false);
    m_locator.Shutdown();
    m_sckServer.Reset();
}

Text ServerLink::DomainController() {
    return PrimaryDomainController();
}

void ServerLink::ShowStatus(const Text& status) {
    m_status = status;
    m_owner.StatusChanged();
}

void ServerLink::ConnectToServer(const Text& host, std::int32_t retryIntervalMs) {
    m_owner.StatusChanged();
    UpdateServerConnected(false);  // whatever session there was ends here, without an event of its own
    m_sckServer.Init(host, kServerPort, retryIntervalMs);
}

void ServerLink::SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) try {
    const Text message = MakeMessage(context, command, JoinParameters(params));
    MaybeLogProtocolData(message, true);
    m_sckServer.SendData(message);
} catch (...) {
    HandleError("frmClientService.SendToServer");
}

// Session

void ServerLink::m_sckServer_ConnectionEstablished() try {
    ShowStatus("Connected");
    Log("Connected to server");
    m_locator.Stop();
    SendToServer("", "HELLO", {"RVL", "CLIENT", VersionString()});
} catch (...) {
    HandleError("frmClientService.m_sckServer_ConnectionEstablished");
}

void ServerLink::m_sckServer_ConnectionLost() try {
    ShowStatus("Disconnected");
    Log("Disconnected from server");
    UpdateServerConnected(false);
} catch (...) {
    HandleError("frmClientService.m_sckServer_ConnectionLost");
}

void ServerLink::UpdateServerConnected(bool connected) try {
    if (m_serverConnected == connected) return;
    m_serverConnected = connected;
    Log(Text("Server is ") + (connected ? "connected" : "disconnected"));
    m_owner.ServerConnectedChanged(connected);
} catch (...) {
    HandleError("frmClientService.UpdateServerConnected");
}

void ServerLink::OnHello(const std::vector<Text>& params) {
    m_serverToken = params.empty() ? Text() : params[0];
    SendLogin();
}

void ServerLink::SendLogin() {
    constexpr char kSeparator = '\0';
    const WorkstationDescription station = m_owner.DescribeWorkstation();
    const Text nonce = RandomNonce(kNonceLength);
    const Text proof = GenerateRVLChecksum(station.uuid + kSeparator + station.computer + kSeparator +
                                           m_domainName + kSeparator + m_serverToken + nonce);
    SendToServer("", "LOGIN",
                 {proof + nonce, station.uuid, station.computer, m_domainName, station.executable,
                  station.isNtFamily ? "1" : "0", station.operatingSystem, station.accessVersions,
                  station.programFiles, station.commonAppData, m_locator.DiscoveryMethod()});
}

void ServerLink::OnLoginOk() {
    m_lastPing =
        GetTickCountEx() - static_cast<std::uint64_t>(RandomBetween(kEarliestLastPing, kLatestLastPing));
    if (m_lastPing == 0) m_lastPing = 1;  // 0 means: not logged in yet
    m_awaitingPong = false;
    m_owner.ServerLoggedIn();
    UpdateServerConnected(true);
}

void ServerLink::OnPong() {
    m_awaitingPong = false;
    m_lastPing = GetTickCountEx();
}

void ServerLink::OnSetServer(const std::vector<Text>& params) {
    const Text address = params.empty() ? Text() : params[0];
    Log("Server says to open new connections to " + (address.empty() ? "<domain/broadcast>" : address));
    m_owner.StoreServerAddress(address);
}

void ServerLink::OnFindServerAgain() {
    Log("Server wants us to disconnect and find a new server");
    m_sckServer.Reset();
    UpdateServerConnected(false);
    m_locator.Restart();
}

// Keep-alive

void ServerLink::tmrKeepAlive_Timer() try {
    m_owner.KeepAliveTick();
    if (m_lastPing != 0 && m_serverConnected) CheckPing();
} catch (...) {
    HandleError("frmClientService.tmrKeepAlive_Timer");
}

void ServerLink::CheckPing() {
    const std::uint64_t now = GetTickCountEx();
    if (m_awaitingPong && CheckTickCountEx(m_lastPing, kPongTimeout)) {
        Log("Ping timeout to server");
        m_sckServer.Reconnect();
    } else if (!m_awaitingPong && CheckTickCountEx(m_lastPing, kPingInterval)) {
        m_lastPing = now;
        m_awaitingPong = true;
        SendToServer("", "PING", {NumberText(static_cast<std::int64_t>(now))});
    }
}

}  // namespace rvl
