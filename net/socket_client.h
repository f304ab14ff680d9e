#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "net/frame_reader.h"
#include "net/socket.h"
#include "runtime/timer.h"

namespace rvl {

/// Exchanges framed messages with one server and never gives up: a failed attempt or a lost connection is
/// told to the owner and tried again after the retry interval, until Reset. An empty frame every minute keeps
/// the connection alive. Messages sent while it is down are logged and dropped; received ones that were not
/// handled yet when it is lost are dropped too, since nothing could answer them.
class SocketClient : private SocketEvent {
 public:
    struct Events {
        std::function<void(Text message)> MessageReceived;
        std::function<void()> ConnectionEstablished;
        std::function<void()> ConnectionLost;
        std::function<void()> ConnectionRetryFailed;
    };

    explicit SocketClient(Events events);
    ~SocketClient() override;
    SocketClient(const SocketClient&) = delete;
    SocketClient& operator=(const SocketClient&) = delete;

    /// Drops what was and connects; an interval of 0 keeps the current one, a negative one raises error 5.
    void Init(const Text& host, std::uint16_t port, std::int32_t retryIntervalMs);
    void SetRetryInterval(std::int32_t milliseconds);  ///< below 1 raises error 380
    std::int32_t RetryInterval() const { return m_retryInterval; }

    void SendData(TextView message);
    bool IsConnected() const { return m_connected; }
    void Reset();
    void Reconnect();
    void RetryConnectSoon();
    void RetryConnectNow();

 private:
    void Error(std::int16_t index, std::int32_t number, const Text& description) override;
    void Closed(std::int16_t index) override;
    void Connected(std::int16_t index) override;
    void DataReceived(std::int16_t index, const Text& data) override;
    void ConnectionRequest(std::int16_t, std::intptr_t) override {}
    void SendProgress(std::int16_t, std::size_t, std::size_t) override {}
    void SendComplete(std::int16_t) override {}
    void StateChanged(std::int16_t, int, const Text&) override {}
    void DNSComplete(std::int16_t, const Text&, const Text&) override {}

    void DropSocket();
    void OpenSocket();
    void TellOwner(const std::function<void()>& event);
    void OnMessage(Text message);
    void StartRetryTimer();
    void m_tmrKeepAlive_ThatTime();

    Events m_events;
    std::shared_ptr<MessageWindow> m_channel;
    std::shared_ptr<Socket> m_socket;
    std::shared_ptr<FrameReader> m_reader;
    bool m_connected = false;
    Text m_host;
    std::uint16_t m_port = 0;
    std::int32_t m_retryInterval = 30000;
    std::unique_ptr<CTimer> m_tmrRetry;
    CTimer m_tmrKeepAlive;
};

}  // namespace rvl
