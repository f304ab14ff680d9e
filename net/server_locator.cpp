#include "net/server_locator.h"

#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/message.h"
#include "util/parameters.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr int kFirstStage = 0;
constexpr int kLastStage = 4;
constexpr std::uint32_t kRecheckInterval = 5000;
constexpr std::uint32_t kTimerInterval = 1000;
constexpr std::int32_t kLocalRetryInterval = 1000;
constexpr std::int32_t kFixedRetryInterval = 60000;
constexpr std::int32_t kDomainRetryInterval = 30000;
constexpr std::int32_t kBroadcastRetryInterval = 30000;
constexpr std::size_t kReplyParameters = 3;

}  // namespace

ServerLocator::ServerLocator(Host& host)
    : m_host(host),
      m_locator([this](const Text& ip, std::uint16_t port, const Text& datagram) {
          m_bcuLocator_MessageReceived(ip, port, datagram);
      }),
      m_tmrLocateServer([this] { tmrLocateServer_Timer(); }) {}

void ServerLocator::Init() {
    m_locator.Init(0, kRecheckInterval);
}

void ServerLocator::Shutdown() {
    Stop();
    m_locator.Shutdown();
}

std::int32_t ServerLocator::BroadcastRetryDelay(int stage) try {
    static constexpr std::int32_t kDelays[] = {0, 5, 10, 30, 150};
    ErrAssert(stage >= kFirstStage && stage <= kLastStage, "Invalid ServerDiscoveryMethod");
    return kDelays[stage];
} catch (...) {
    HandleError("frmClientService.BroadcastRetryDelay");
    return 0;
}

void ServerLocator::LocateServer() try {
    Log("LocateServer() called");
    m_stage == kFirstStage ? LocateFirst() : LocateNext();
} catch (...) {
    HandleError("frmClientService.LocateServer");
    RetryLocateIn(BroadcastRetryDelay(kLastStage));  // whatever failed, the search goes on
}

void ServerLocator::LocateFirst() {
    const Text address = m_host.ServerAddress();
    if (!address.empty()) return TryFixedAddress(address);
    m_stage = 1;
    m_retryDelay = BroadcastRetryDelay(m_stage);
    Log("Looking up domain controller...");
    const Text controller = m_host.DomainController();
    if (!controller.empty()) return TryDomainController(controller);
    Log("No domain controller, using broadcast");
    SendLocateBroadcast();
    RetryLocateIn(m_retryDelay);
}

/// The client's own retries keep trying a fixed address: no other server is ever looked for.
void ServerLocator::TryFixedAddress(const Text& address) {
    m_host.ShowStatus("Connecting to " + address);
    Log("Using fixed server address: " + address);
    m_retryDelay = 60;
    m_discoveryMethod = "fixed:" + address;
    m_host.ConnectToServer(address, address == "localhost" ? kLocalRetryInterval : kFixedRetryInterval);
}

void ServerLocator::TryDomainController(const Text& controller) {
    m_host.ShowStatus("Connecting to " + controller);
    Log("Attempting to connect to domain controller: " + controller);
    m_discoveryMethod = "domain:" + controller;
    m_host.ConnectToServer(controller, kDomainRetryInterval);
    RetryLocateIn(m_retryDelay);
}

void ServerLocator::LocateNext() {
    SendLocateBroadcast();
    if (m_stage < kLastStage) m_retryDelay = BroadcastRetryDelay(++m_stage);
    RetryLocateIn(m_retryDelay);
}

void ServerLocator::Restart() {
    m_foundByBroadcast = false;
    m_stage = kFirstStage;
    LocateServer();
}

/// Twice in succession: one lost datagram must not cost a whole round.
void ServerLocator::SendLocateBroadcast() try {
    m_host.ShowStatus("Broadcasting...");
    const Text datagram = MakeMessage("", "LOCATE", "");
    m_locator.Broadcast(kServerPort, datagram);
    m_locator.Broadcast(kServerPort, datagram);
} catch (...) {
    HandleError("frmClientService.SendLocateBroadcast");
}

void ServerLocator::RetryLocateIn(std::int32_t seconds) try {
    m_locateStart = GetTickCountEx();
    m_locateWait = std::int64_t{seconds} * 1000;
    m_tmrLocateServer.SetInterval(kTimerInterval);
    m_tmrLocateServer.SetEnabled(true);
} catch (...) {
    HandleError("frmClientService.RetryLocateIn");
}

void ServerLocator::tmrLocateServer_Timer() {
    if (!CheckTickCountEx(m_locateStart, m_locateWait)) return;
    Stop();
    LocateServer();
}

void ServerLocator::m_bcuLocator_MessageReceived(const Text& remoteIP, std::uint16_t remotePort,
                                                 const Text& datagram) try {
    const Text peer = remoteIP + ":" + NumberText(remotePort);
    MaybeLogProtocolData(datagram, false, "UDP " + peer);
    const Message message = SplitMessage(datagram);
    if (message.command != "LOCATE_REPLY")
        return Log("Unknown UDP message from " + peer + ": " +
                   (ContainsNonPrintableCharacters(datagram) ? HexDumpString(datagram) : datagram));
    const auto params = SplitParameters(message.params);
    // A late or unasked-for reply must not take a working link away.
    if (m_foundByBroadcast || m_host.IsConnectedToServer()) return;
    if (params.size() >= kReplyParameters) AcceptReply(remoteIP, params[0]);
} catch (...) {
    HandleError("frmClientService.m_bcuLocator_MessageReceived");
}

void ServerLocator::AcceptReply(const Text& remoteIP, const Text& serverName) {
    Log("Found server via broadcast: " + serverName + " @ " + remoteIP);
    m_foundByBroadcast = true;
    m_discoveryMethod = "broadcast:" + remoteIP;
    m_host.ConnectToServer(remoteIP, kBroadcastRetryInterval);
}

}  // namespace rvl
