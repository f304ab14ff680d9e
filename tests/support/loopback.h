#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "net/frame_reader.h"
#include "net/socket.h"
#include "platform/event_loop.h"
#include "platform/socket_endpoint.h"
#include "tests/support/workstation.h"
#include "util/ipv4.h"

namespace rvl::test {

/// Writes down every event of a socket but the received data, then runs what the test wants done inside it.
class RecordingSink : public SocketEvent {
 public:
    Text trace;  ///< "Event details|"; a change of state as "3 Connected|"
    Text received;
    int receipts = 0;
    std::map<Text, std::function<void()>> on;  ///< by event name
    std::function<void(std::intptr_t)> onRequest;

    bool Has(const Text& text) const { return trace.find(text) != Text::npos; }

    void Error(std::int16_t, std::int32_t number, const Text& description) override {
        Note("Error", "Error " + std::to_string(number) + " " + description + "|");
    }
    void Closed(std::int16_t) override { Note("Closed", "Closed|"); }
    void Connected(std::int16_t) override { Note("Connected", "Connected|"); }
    void DataReceived(std::int16_t, const Text& data) override {
        received += data;
        ++receipts;
        Note("DataReceived", "");
    }
    void ConnectionRequest(std::int16_t, std::intptr_t id) override {
        if (onRequest) onRequest(id);
        Note("ConnectionRequest", "ConnectionRequest|");
    }
    void SendProgress(std::int16_t, std::size_t count, std::size_t queued) override {
        Note("SendProgress", "Sent " + std::to_string(count) + " " + std::to_string(queued) + "|");
    }
    void SendComplete(std::int16_t) override { Note("SendComplete", "SendComplete|"); }
    void StateChanged(std::int16_t, int state, const Text& name) override {
        Note("StateChanged", std::to_string(state) + " " + name + "|");
    }
    void DNSComplete(std::int16_t, const Text& host, const Text& address) override {
        Note("DNSComplete", "DNS " + host + " " + address + "|");
    }

 private:
    void Note(const Text& name, const Text& event) {
        trace += event;
        if (const auto found = on.find(name); found != on.end()) {
            const auto action = found->second;  // a copy: it may clear the table
            action();
        }
    }
};

/// A socket with its record; dropped with it.
struct TestSocket {
    RecordingSink sink;
    std::shared_ptr<Socket> socket = Socket::Create();

    TestSocket() { socket->setEventHandler(&sink, 5); }
    ~TestSocket() { socket->Drop(); }
    TestSocket(const TestSocket&) = delete;
    TestSocket& operator=(const TestSocket&) = delete;
};

/// A listener on 127.0.0.1 that accepts into `server`, and a client that can be connected to it.
struct LoopbackPair {
    TestSocket listener, server, client;

    LoopbackPair() {
        listener.sink.onRequest = [this](std::intptr_t id) { server.socket->Accept(id); };
        listener.socket->Listen(0, "127.0.0.1");
    }

    std::uint16_t Port() const { return listener.socket->LocalPort(); }

    bool Connect() {
        client.socket->Connect("127.0.0.1", Port());
        return RunUntil([this] { return client.sink.Has("Connected|") && server.sink.Has("Connected|"); });
    }
};

/// A server that keeps every connection it accepts on 127.0.0.1.
struct Peer {
    TestSocket listener;
    std::vector<std::unique_ptr<TestSocket>> connections;

    explicit Peer(std::uint16_t port = 0) {
        listener.sink.onRequest = [this](std::intptr_t id) {
            connections.push_back(std::make_unique<TestSocket>());
            connections.back()->socket->Accept(id);
        };
        listener.socket->Listen(port, "127.0.0.1");
    }

    std::uint16_t Port() const { return listener.socket->LocalPort(); }
    Socket& Last() { return *connections.back()->socket; }
    Text& Received() { return connections.back()->sink.received; }

    /// The messages that the last connection has received since the last call; keep-alives are left out.
    std::vector<Text> TakeMessages() {
        std::vector<Text> messages;
        FrameReader().Receive(std::exchange(Received(), ""), [&](Text message) {
            if (!message.empty()) messages.push_back(std::move(message));
        });
        return messages;
    }
};

/// A port of 127.0.0.1 at which nobody listens, for as long as it lives.
class ClosedPort {
 public:
    ClosedPort() {
        m_endpoint.Open(platform::Protocol::Tcp);
        m_endpoint.Bind({ParseDotted("127.0.0.1").value(), 0});
    }
    std::uint16_t Port() const {
        std::uint16_t port = 0;
        m_endpoint.LocalPort(port);
        return port;
    }

 private:
    platform::SocketEndpoint m_endpoint;
};

/// Lets everything that is on its way arrive.
inline void Settle() {
    for (int round = 0; round < 30; ++round)
        platform::ProcessPendingEvents();
}

/// Bytes of which every four tell their own place, so that a piece lost, doubled or moved shows.
inline Text NumberedBytes(std::size_t size) {
    Text bytes;
    for (std::uint32_t word = 0; bytes.size() < size; ++word)
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(word >> shift);
    bytes.resize(size);
    return bytes;
}

}  // namespace rvl::test
