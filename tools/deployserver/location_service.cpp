#include "tools/deployserver/location_service.h"

#include <utility>

#include "platform/error.h"
#include "runtime/process_state.h"
#include "util/message.h"
#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

constexpr int kUdp = 1;
constexpr const char* kAbout = "Ravelin deployment server for trials and tests";

}  // namespace

LocationService::LocationService(Text serverName, const Console& console)
    : m_console(console),
      m_reply(MakeMessage("", "LOCATE_REPLY",
                          JoinParameters({std::move(serverName), VersionString(), kAbout}))) {}

LocationService::~LocationService() {
    Close();
}

void LocationService::Open(std::uint16_t port) {
    m_port = port;
    m_socket = Socket::Create();
    m_socket->SetProtocol(kUdp);
    m_socket->setEventHandler(this, 0);
    m_socket->Bind(port, "");
}

void LocationService::Close() {
    if (const auto socket = std::exchange(m_socket, nullptr)) socket->Drop();
}

void LocationService::DataReceived(std::int16_t, const Text& datagram) {
    const Text host = m_socket->RemoteIP();
    const std::uint16_t port = m_socket->RemotePort();
    const Text peer = host + ":" + NumberText(port);
    if (SplitMessage(datagram).command != "LOCATE")
        return m_console.Step("UNKNOWN from " + peer + ": " + datagram);
    m_console.Step("LOCATE from " + peer);
    Reply(host, port);
}

void LocationService::Reply(const Text& host, std::uint16_t port) {
    const auto socket = m_socket;
    socket->SendTo(host, port, m_reply);
}

/// A reply that cannot be sent closes the socket: the next workstation is to be heard all the same.
void LocationService::Error(std::int16_t, std::int32_t, const Text& description) {
    m_console.Outcome("LOCATE_REPLY failed: " + description);
    try {
        if (m_socket && m_socket->State() == SocketState::Disconnected) m_socket->Bind(m_port, "");
    } catch (const rvl::Error& error) {
        m_console.Outcome("LOCATE can no longer be answered: " + error.Description());
    }
}

}  // namespace rvl::deployserver
