#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// Receiver of a socket's events; the index tells which socket. What a handler throws comes back as Error.
/// A handler may reset or drop the socket.
class SocketEvent {
 public:
    virtual ~SocketEvent() = default;

    virtual void Error(std::int16_t index, std::int32_t number, const Text& description) = 0;
    virtual void Closed(std::int16_t index) = 0;
    virtual void Connected(std::int16_t index) = 0;
    virtual void DataReceived(std::int16_t index, const Text& data) = 0;
    virtual void ConnectionRequest(std::int16_t index, std::intptr_t requestId) = 0;
    virtual void SendProgress(std::int16_t index, std::size_t sent, std::size_t queued) = 0;
    virtual void SendComplete(std::int16_t index) = 0;
    virtual void StateChanged(std::int16_t index, int state, const Text& name) = 0;
    virtual void DNSComplete(std::int16_t index, const Text& host, const Text& address) = 0;
};

/// A receiver that ignores every event it does not override.
class SocketEventAdapter : public SocketEvent {
 public:
    void Error(std::int16_t, std::int32_t, const Text&) override {}
    void Closed(std::int16_t) override {}
    void Connected(std::int16_t) override {}
    void DataReceived(std::int16_t, const Text&) override {}
    void ConnectionRequest(std::int16_t, std::intptr_t) override {}
    void SendProgress(std::int16_t, std::size_t, std::size_t) override {}
    void SendComplete(std::int16_t) override {}
    void StateChanged(std::int16_t, int, const Text&) override {}
    void DNSComplete(std::int16_t, const Text&, const Text&) override {}
};

}  // namespace rvl
