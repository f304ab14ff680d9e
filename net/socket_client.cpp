#include "net/socket_client.h"

#include <utility>

#include "runtime/log_file.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

constexpr std::int16_t kSinkIndex = -2;
constexpr std::uint32_t kKeepAliveInterval = 60000;

}  // namespace

SocketClient::SocketClient(Events events)
    : m_events(std::move(events)), m_tmrKeepAlive([this] { m_tmrKeepAlive_ThatTime(); }) {
    m_tmrKeepAlive.SetInterval(kKeepAliveInterval);
    m_tmrKeepAlive.SetEnabled(true);
}

SocketClient::~SocketClient() {
    Reset();
}

void SocketClient::Init(const Text& host, std::uint16_t port, std::int32_t retryIntervalMs) {
    Reset();
    if (retryIntervalMs < 0) RaiseInvalidCall("SocketClient.Init");
    if (retryIntervalMs > 0) m_retryInterval = retryIntervalMs;
    m_host = host;
    m_port = port;
    m_connected = false;
    RetryConnectNow();
}

void SocketClient::SetRetryInterval(std::int32_t milliseconds) {
    if (milliseconds < 1) RaiseInvalidPropertyValue("SocketClient.RetryInterval");
    m_retryInterval = milliseconds;
    if (m_tmrRetry) m_tmrRetry->SetInterval(static_cast<std::uint32_t>(milliseconds));
}

void SocketClient::SendData(TextView message) try {
    if (m_socket && m_socket->State() == SocketState::Connected)
        m_socket->SendData(FrameHeader(message), message);
    else
        Log("SocketClient not connected");
} catch (...) {
    HandleError("SocketClient.SendData");
}

void SocketClient::DropSocket() {
    if (m_reader) m_reader->Close();
    m_reader.reset();
    if (const auto socket = std::exchange(m_socket, nullptr)) socket->Drop();
}

void SocketClient::Reset() try {
    m_tmrRetry.reset();
    m_connected = false;
    m_host.clear();
    m_port = 0;
    DropSocket();
} catch (...) {
    HandleError("SocketClient.Reset");
}

void SocketClient::Reconnect() {
    RetryConnectSoon();
    RetryConnectNow();
}

void SocketClient::RetryConnectSoon() try {
    const bool wasConnected = std::exchange(m_connected, false);
    DropSocket();
    TellOwner(wasConnected ? m_events.ConnectionLost : m_events.ConnectionRetryFailed);
    // The owner may have given up (Reset) or turned to another host (Init) while it was told.
    if (!m_host.empty() && !m_socket) StartRetryTimer();
} catch (...) {
    HandleError("SocketClient.RetryConnectSoon");
}

/// An owner that fails must not end the retries.
void SocketClient::TellOwner(const std::function<void()>& event) {
    try {
        event();
    } catch (...) {
        HandleError("SocketClient.RetryConnectSoon");
    }
}

void SocketClient::StartRetryTimer() {
    m_tmrRetry = std::make_unique<CTimer>([this] { RetryConnectNow(); });
    m_tmrRetry->SetInterval(static_cast<std::uint32_t>(m_retryInterval));
    m_tmrRetry->SetEnabled(true);
}

void SocketClient::RetryConnectNow() try {
    if (m_connected || m_host.empty()) return;
    m_tmrRetry.reset();
    DropSocket();
    OpenSocket();
} catch (...) {
    HandleError("SocketClient.RetryConnectNow");
    DropSocket();
    StartRetryTimer();
}

void SocketClient::OpenSocket() {
    if (!m_channel) m_channel = MessageWindow::Create("SocketClient (auto-create)");
    m_reader = std::make_shared<FrameReader>();
    m_socket = Socket::Create();
    m_socket->SetMsgWnd(m_channel);
    m_socket->setEventHandler(this, kSinkIndex);
    const auto socket = m_socket;  // an immediate failure drops the member
    socket->Connect(m_host, m_port);
}

void SocketClient::Connected(std::int16_t) try {
    m_connected = true;
    m_events.ConnectionEstablished();
} catch (...) {
    HandleError("SocketClient.SocketEvent_Connected");
}

void SocketClient::DataReceived(std::int16_t index, const Text& data) try {
    const auto reader = m_reader;  // survives a handler that drops the connection
    if (!reader) return;
    const bool sound = reader->Receive(data, [this](Text message) { OnMessage(std::move(message)); });
    if (!sound) Closed(index);
} catch (...) {
    HandleError("SocketClient.SocketEvent_DataReceived");
}

/// A message that fails must not hold up those behind it.
void SocketClient::OnMessage(Text message) {
    try {
        m_events.MessageReceived(std::move(message));
    } catch (...) {
        HandleError("SocketClient.SocketEvent_DataReceived");
    }
}

void SocketClient::Closed(std::int16_t) {
    RetryConnectSoon();
}

void SocketClient::Error(std::int16_t, std::int32_t, const Text&) {
    RetryConnectSoon();
}

void SocketClient::m_tmrKeepAlive_ThatTime() {
    if (m_reader) m_reader->ReleaseRoom();
    if (m_connected) SendData("");
}

}  // namespace rvl
