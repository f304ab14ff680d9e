#include "net/socket_client.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "tests/support/loopback.h"
#include "tests/support/private_network.h"
#include "tests/support/virtual_clock.h"
#include "util/message.h"

namespace rvl {
namespace {

using test::ClosedPort;
using test::RunUntil;
using test::Settle;

class ClientTest : public test::PrivateNetworkTest {
 protected:
    void Note(const Text& event, const Text& details = "") {
        log += event + details + "|";
        if (event == when) std::exchange(when, {}), act();
    }

    bool Happens(const Text& expected) {
        RunUntil([&] { return log.size() >= expected.size(); });
        Settle();
        EXPECT_EQ(log, expected);
        return log == expected;
    }

    bool Connect() {
        log.clear();
        client.Init("127.0.0.1", peer.Port(), 30000);
        return Happens("Established|") && RunUntil([&] { return !peer.connections.empty(); });
    }

    test::VirtualClock clock;
    test::Peer peer, other;
    Text log;
    Text when;  ///< the event at which the owner acts, once
    std::function<void()> act;
    SocketClient client{{[this](const Text& message) { Note("Message", message); },
                         [this] { Note("Established"); }, [this] { Note("Lost"); },
                         [this] { Note("RetryFailed"); }}};
};

TEST_F(ClientTest, RetriesAtItsInterval) {
    ASSERT_TRUE(Connect());
    const std::uint16_t port = peer.Port();
    peer.listener.socket->Reset();
    peer.Last().Reset();
    Text expected = "Established|Lost|";
    for (int attempt = 0; attempt < 3; ++attempt) {
        ASSERT_TRUE(Happens(expected));
        clock.Advance(29999);
        ASSERT_TRUE(Happens(expected));
        clock.Advance(1);
        expected += "RetryFailed|";
    }
    ASSERT_TRUE(Happens(expected));
    client.SetRetryInterval(1000);  // also of the retry that is waiting
    test::Peer back(port);
    clock.Advance(1000);
    ASSERT_TRUE(Happens(expected += "Established|"));
    client.Reconnect();
    expected += "Lost|Established|";
    ASSERT_TRUE(Happens(expected));
    clock.Advance(300000);  // no retry is left over
    EXPECT_TRUE(Happens(expected));
}

TEST_F(ClientTest, FailedAttempts) {
    EXPECT_TRUE(test::ErrorOf([&] { client.Init("127.0.0.1", 9, -1); }).starts_with("5 "));
    EXPECT_TRUE(test::ErrorOf([&] { client.SetRetryInterval(0); }).starts_with("380 "));
    client.Init("203.0.113.1", 9, 0);  // there is no route to it
    EXPECT_TRUE(Happens("RetryFailed|"));
    EXPECT_EQ(client.RetryInterval(), 30000);
}

TEST_F(ClientTest, Frames) {
    test::ClearLog();
    client.SendData("early");
    EXPECT_TRUE(test::Logged("SocketClient not connected"));
    ASSERT_TRUE(Connect());
    client.SendData(Text("\0PING\0", 6));
    clock.Advance(59999);
    EXPECT_TRUE(RunUntil([&] { return peer.Received() == Text("\6\0\0\0\0PING\0", 10); }));
    clock.Advance(60001);
    EXPECT_TRUE(RunUntil([&] { return peer.Received() == Text("\6\0\0\0\0PING\0\0\0\0\0\0\0\0\0", 18); }));
    peer.Last().SendData(MakeFrame("a") + MakeFrame("") + MakeFrame("b"));
    EXPECT_TRUE(Happens("Established|Messagea|Message|Messageb|"));
    peer.Last().SendData(LongToString(600000) + Text(kInputBufferLimit - 3, 'x'));
    EXPECT_TRUE(Happens("Established|Messagea|Message|Messageb|Lost|"));
}

/// How a connected client comes to tell its owner of an event.
const std::pair<Text, void (*)(test::Peer&, SocketClient&)> kCauses[] = {
    {"Established", [](test::Peer& peer, SocketClient& client) { client.Init("127.0.0.1", peer.Port(), 0); }},
    {"Message",
     [](test::Peer& peer, SocketClient&) { peer.Last().SendData(MakeFrame("") + MakeFrame("next")); }},
    {"Lost", [](test::Peer& peer, SocketClient&) { peer.Last().Reset(); }},
    {"Lost", [](test::Peer&, SocketClient& client) { client.Reconnect(); }},
    {"RetryFailed",
     [](test::Peer&, SocketClient& client) { client.Init("127.0.0.1", ClosedPort().Port(), 0); }}};

TEST_F(ClientTest, TheOwnerMayResetTurnAwayOrFailInsideAnEvent) {
    const std::pair<std::function<void()>, Text> deeds[] = {
        {[&] { client.Reset(); }, "nobody"},
        {[&] { client.Init("127.0.0.1", other.Port(), 7000); }, "other"},
        {[] { throw Error(5, "Owner", "boom"); }, "peer"}};
    for (const auto& [deed, partner] : deeds) {
        for (const auto& [event, cause] : kCauses) {
            ASSERT_TRUE(Connect());
            when = event;
            act = deed;
            cause(peer, client);
            ASSERT_TRUE(RunUntil([&] { return when.empty(); })) << event;
            Settle();
            EXPECT_TRUE(event != "Message" || log.ends_with("Messagenext|") == (partner == "peer"));
            const Text told = log;
            clock.Advance(30000);  // who has failed does not end the retries
            RunUntil([&] { return client.IsConnected() || log != told; }, partner == "nobody" ? 20 : 5000);
            Settle();
            const bool alone = partner == "nobody" || (event == "RetryFailed" && partner == "peer");
            EXPECT_EQ(client.IsConnected(), !alone) << partner << event;
            EXPECT_TRUE(partner != "nobody" || log == told) << event;
            EXPECT_TRUE(partner != "other" || other.Last().State() == SocketState::Connected) << event;
        }
    }
}

}  // namespace
}  // namespace rvl
