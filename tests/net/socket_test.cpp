#include "net/socket.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "tests/support/fake_dialogs.h"
#include "tests/support/loopback.h"
#include "tests/support/private_network.h"

namespace rvl {
namespace {

using test::ClosedPort;
using test::NumberedBytes;
using test::RunUntil;
using test::Settle;
using test::TestSocket;

class SocketTest : public test::PrivateNetworkTest {
 protected:
    void SetUp() override {
        PrivateNetworkTest::SetUp();
        for (TestSocket* end : {&a, &b})
            end->socket->SetProtocol(1), end->socket->Bind(0, "127.0.0.1");
    }

    test::LoopbackPair pair;
    TestSocket &client = pair.client, &server = pair.server, idle, a, b;  ///< a and b for datagrams
};

TEST_F(SocketTest, MisuseIsRefused) {
    ASSERT_TRUE(pair.Connect());
    const Text active = "Connect: An operation is already active: You must disconnect first";
    const std::pair<std::function<void()>, Text> rows[] = {
        {[&] { client.socket->SetMsgWnd({}); },
         "1503 Socket.MsgWnd: Disconnect first before changing the message window"},
        {[&] { pair.listener.socket->Connect("localhost", 1); }, "1503 Socket." + active},
        {[&] { pair.listener.socket->SendData("x"); },
         "1500 Socket.SendData: Operation invalid in this state"},
        {[&] { idle.socket->Accept(999999); }, "1499 Socket.Accept: Invalid requestID specified"},
        {[&] { a.socket->SendData("x"); },
         "1498 Socket.SendData: This operation is only supported on TCP sockets"},
        {[&] { idle.socket->Bind(0, ""); },
         "1498 Socket.Bind: This operation is only supported on UDP sockets"},
        {[&] { idle.socket->SetProtocol(2); }, "380 Socket.Protocol: Invalid property value"},
        {[&] { idle.socket->Listen(pair.Port(), "127.0.0.1"); },
         "10048 Socket.Listen: Address already in use"}};
    for (const auto& [act, expected] : rows)
        EXPECT_EQ(test::ErrorOf(act), (expected[0] == '1' && expected[4] == ' ' ? "-214722" : "") + expected);
    idle.socket->Listen(0, "127.0.0.1");  // what was refused leaves it usable
    EXPECT_EQ(idle.sink.trace, "4 Listening|");
}

TEST_F(SocketTest, EventsOfOneConnection) {
    client.socket->Connect("localhost", pair.Port());
    ASSERT_TRUE(RunUntil([&] { return client.sink.Has("3 Connected|") && server.sink.Has("3 Connected|"); }));
    EXPECT_EQ(server.socket->RemoteIP() + std::to_string(server.socket->RemotePort()),
              "127.0.0.1" + std::to_string(client.socket->LocalPort()));
    client.socket->SendData("");
    client.socket->SendData("request");
    EXPECT_FALSE(client.sink.Has("SendComplete"));  // comes later, from the loop
    ASSERT_TRUE(RunUntil([&] { return server.sink.received == "request"; }));
    server.socket->SendData(NumberedBytes(100000));
    server.socket->Reset();
    ASSERT_TRUE(RunUntil([&] { return client.sink.Has("Closed"); }));
    EXPECT_TRUE(client.sink.received == NumberedBytes(100000));
    EXPECT_EQ(client.sink.trace,
              "1 Resolving|2 Connecting|3 Connected|Connected|Sent 7 0|SendComplete|0 Disconnected|Closed|");
    EXPECT_EQ(pair.listener.sink.trace, "4 Listening|ConnectionRequest|");
}

/// Who turns somebody away does not read what comes in meanwhile.
TEST_F(SocketTest, WhatWasSentArrivesAlsoFromOneThatDoesNotListen) {
    ASSERT_TRUE(pair.Connect());
    client.socket->SendData(NumberedBytes(5000));
    server.socket->SendData("no");
    server.socket->Reset();
    client.socket->SendData("more");
    ASSERT_TRUE(RunUntil([&] { return client.sink.Has("Closed"); }));
    EXPECT_EQ(client.sink.received, "no");
}

TEST_F(SocketTest, ConnectsThatFail) {
    const ClosedPort closed;
    const std::pair<Text, Text> rows[] = {
        {"127.0.0.1", "2 Connecting|0 Disconnected|Error 10061 Connection refused|"},
        {"localhost", "1 Resolving|2 Connecting|0 Disconnected|Error 10061 Connection refused|"},
        {"203.0.113.1", "2 Connecting|0 Disconnected|Error -2147221502 Error connecting to 203.0.113.1:" +
                            std::to_string(closed.Port())},
        {"nobody.invalid", "1 Resolving|0 Disconnected|Error 1100"}};
    for (const auto& [host, trace] : rows) {
        TestSocket failing;
        failing.socket->Connect(host, closed.Port());
        ASSERT_TRUE(RunUntil([&] { return failing.sink.Has("Error"); }, 20000)) << host;
        Settle();
        EXPECT_EQ(failing.sink.trace.substr(0, trace.size()), trace);
    }
}

TEST_F(SocketTest, AHandlerMayThrowResetOrDrop) {
    const auto reconnect = [&](std::uint16_t port) {
        client.socket->Reset();
        client.socket->Connect("127.0.0.1", port);
    };
    const std::pair<Text, std::function<void()>> causes[] = {
        {"DataReceived", [&] { server.socket->SendData("x"); }},
        {"SendProgress", [&] { client.socket->SendData("x"); }},
        {"SendComplete", [&] { client.socket->SendData("x"); }},
        {"DNSComplete", [&] { client.socket->DNS("localhost", false); }},
        {"StateChanged", [&] { server.socket->Reset(); }},
        {"Closed", [&] { server.socket->Reset(); }},
        {"Error", [&] { reconnect(ClosedPort().Port()); }},
        {"Connected", [&] { server.socket->Reset(), reconnect(pair.Port()); }}};
    for (const auto& [event, cause] : causes) {
        for (const Text deed : {"throw", "throw in Error too", "reset", "drop"}) {
            server.socket->Reset();
            client.socket = Socket::Create();
            client.socket->setEventHandler(&client.sink, 5);
            client.sink.trace = server.sink.trace = "";
            ASSERT_TRUE(pair.Connect());
            test::FakeDialogs dialogs;
            Text traceThen;
            if (deed == "throw in Error too")
                client.sink.on["Error"] = [] { throw Error(8, "Sink", "bang"); };
            client.sink.on[event] = [&] {
                client.sink.on.erase(event);
                traceThen = client.sink.trace;
                if (deed.starts_with("throw")) throw Error(7, "Sink", "boom");
                deed == "reset" ? client.socket->Reset()
                                : std::exchange(client.socket, Socket::Create())->Drop();
            };
            cause();
            ASSERT_TRUE(RunUntil([&] { return !traceThen.empty(); })) << event;
            Settle();
            client.sink.on.clear();
            const Text told = "SocketEvent." + event + " caused error 7: boom";
            EXPECT_EQ(client.sink.Has("Error 7 " + told), deed.starts_with("throw")) << event;
            EXPECT_TRUE(deed != "drop" || client.sink.trace == traceThen) << event;  // nothing follows
            if (deed != "throw in Error too" || event == "Error") continue;
            ASSERT_EQ(dialogs.boxes.size(), 1u) << event;
            EXPECT_EQ(dialogs.boxes[0].title + ": " + dialogs.boxes[0].prompt,
                      "SocketEvent Error: The SocketEvent.Error() method caused error 8: bang while "
                      "handling:\r\n\r\n" +
                          told + "\r\n\r\nThe program will attempt to continue when you click OK");
        }
    }
}

TEST_F(SocketTest, ASendThatWouldBlockResumesAndCompletesOnce) {
    platform::SocketEndpoint listener, connection;
    platform::Ipv4Endpoint own{ParseDotted("127.0.0.1").value(), 0}, remote;
    ASSERT_EQ(listener.Open(platform::Protocol::Tcp) + listener.Bind(own) + listener.Listen(1), 0);
    listener.LocalPort(own.port);
    client.socket->Connect("127.0.0.1", own.port);
    ASSERT_TRUE(RunUntil([&] { return client.sink.Has("3 Connected|"); }));
    ASSERT_EQ(connection.Accept(listener.Handle(), remote), 0);
    client.socket->SendData(NumberedBytes(20000000));
    Settle();
    EXPECT_FALSE(client.sink.Has("SendComplete"));  // nobody reads
    client.socket->SendData("tail");
    Text received, buffer(65536, '\0');
    const auto readAll = [&] {
        std::size_t count = 0;
        while (connection.Receive(buffer.data(), buffer.size(), count) == 0 && count > 0)
            received.append(buffer, 0, count);
        return received.size() == 20000004;
    };
    EXPECT_TRUE(RunUntil(readAll, 30000));
    Settle();
    connection.Close();
    EXPECT_TRUE(received == NumberedBytes(20000000) + "tail");
    EXPECT_EQ(client.sink.trace.find("SendComplete|"),
              client.sink.trace.size() - 13);  // exactly one, at the end
}

TEST_F(SocketTest, SendDataInsideTheSendLoop) {
    ASSERT_TRUE(pair.Connect());
    int depth = 0, deepest = 0, tails = 3;
    client.sink.on["SendProgress"] = [&] {
        deepest = std::max(deepest, ++depth);
        if (tails-- > 0) client.socket->SendData("tail");
        --depth;
    };
    platform::PostEvent([&] { client.socket->SendData("yield"); });  // runs in the first pause of the loop
    client.socket->SendData(NumberedBytes(30000));
    ASSERT_TRUE(RunUntil([&] { return server.sink.received.size() == 30017; }));
    Settle();
    EXPECT_TRUE(server.sink.received == NumberedBytes(30000) + "yieldtailtailtail");
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(client.sink.trace.find("SendComplete|"),
              client.sink.trace.size() - 13);  // exactly one, at the end
}

TEST_F(SocketTest, Datagrams) {
    const Text large = NumberedBytes(20000);
    a.socket->SendTo("127.0.0.1", b.socket->LocalPort(), large);
    ASSERT_TRUE(RunUntil([&] { return b.sink.received == large; }));
    EXPECT_EQ(b.socket->RemoteIP() + std::to_string(b.socket->RemotePort()),
              "127.0.0.1" + std::to_string(a.socket->LocalPort()));
    a.sink.on["StateChanged"] = [&] {  // what comes while the name is looked up is dropped
        a.sink.on.clear();
        b.socket->SendTo("127.0.0.1", a.socket->LocalPort(), "dropped");
        Settle();
    };
    a.socket->SendTo("localhost", b.socket->LocalPort(), "by name");
    ASSERT_TRUE(RunUntil([&] { return b.sink.received == large + "by name"; }));
    EXPECT_EQ(a.sink.trace, "5 Open|SendComplete|1 Resolving|5 Open|SendComplete|");
    for (const char* data : {"", "kept"})
        b.socket->SendTo("127.0.0.1", a.socket->LocalPort(), data);
    EXPECT_TRUE(RunUntil([&] { return a.sink.received == "kept"; }));
    EXPECT_EQ(a.sink.receipts, 1);
    a.socket->SendTo("127.0.0.1", b.socket->LocalPort(), Text(70000, 'x'));
    EXPECT_TRUE(a.sink.Has("SendComplete|0 Disconnected|Error 10040 "));
}

TEST_F(SocketTest, NameLookups) {
    client.socket->DNS("192.0.2.7", false);
    EXPECT_EQ(client.sink.trace, "DNS 192.0.2.7 192.0.2.7|");  // at once
    client.socket->DNS("localhost", false);
    EXPECT_TRUE(RunUntil([&] { return client.sink.Has("|DNS localhost 127.0.0.1|"); }));
    idle.socket->DNS("127.0.0.1", true);
    EXPECT_TRUE(RunUntil([&] { return idle.sink.Has("DNS local") && idle.sink.Has(" 127.0.0.1|"); }));
    client.socket->Connect("localhost", pair.Port());
    client.socket->Reset();
    EXPECT_FALSE(RunUntil([&] { return client.sink.Has("Connecting"); }, 100));  // it was cancelled
}

}  // namespace
}  // namespace rvl
