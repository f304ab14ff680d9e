#include "net/socket_server.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "tests/support/loopback.h"
#include "tests/support/virtual_clock.h"
#include "util/message.h"

namespace rvl {
namespace {

using test::RunUntil;
using test::Settle;

struct Session : ClientData {};

class ServerTest : public testing::Test {
 protected:
    ServerTest() {
        test::ClearLog();
        server.Init(0, "127.0.0.1");
    }

    void Note(const Text& event, std::int16_t id, const Text& details = "") {
        log += event + std::to_string(id) + details + "|";
        if (event == when) std::exchange(when, {}), act(id);
    }

    void Happens(const Text& expected) {
        RunUntil([&] { return log.size() >= expected.size(); }, 1000);
        Settle();
        EXPECT_EQ(std::exchange(log, {}), expected);
    }

    std::unique_ptr<test::TestSocket> Join(const Text& id) {
        auto client = std::make_unique<test::TestSocket>();
        client->socket->Connect("127.0.0.1", server.LocalPort());
        RunUntil([&] { return client->sink.Has("3 Connected|"); });
        Happens("Connected" + id + "|");
        return client;
    }

    test::VirtualClock clock;
    Text log;
    Text when;  ///< the event at which the owner acts, once
    std::function<void(std::int16_t)> act;
    SocketServer server{
        {[this](std::int16_t id) { Note("Connected", id); },
         [this](std::int16_t id) { Note("Disconnected", id); },
         [this](std::int16_t id, const Text& message) { Note("Message", id, " " + message); }}};
};

TEST_F(ServerTest, SlotsAreReusedLowestFirst) {
    auto a = Join("0"), b = Join("1"), c = Join("2");
    const auto session = std::make_shared<Session>();
    server.SetData(1, session);
    when = "Disconnected";
    act = [&](std::int16_t id) {  // who leaves can still be looked at
        EXPECT_TRUE(server.Data(id) == session && server.RemoteIP(id) == "127.0.0.1");
        server.SendData(id, "x");
        server.SendDataAll("bye");
    };
    b.reset();
    Happens("Disconnected1|");
    EXPECT_TRUE(test::Logged("SocketServer::SendData Not Connected"));
    EXPECT_TRUE(test::Logged("SocketServer::SendDataAll Not Connected"));
    EXPECT_TRUE(
        RunUntil([&] { return a->sink.received + c->sink.received == MakeFrame("bye") + MakeFrame("bye"); }));
    EXPECT_EQ(server.ConnectedClients() * 10 + server.MaxClientID(), 22);
    b = Join("1");
    EXPECT_EQ(server.Data(1), nullptr);
    server.KillClient(2);
    server.KillClient(0);
    EXPECT_TRUE(RunUntil([&] { return a->sink.Has("Closed") && c->sink.Has("Closed"); }));
    Happens("");  // without an event
    a = Join("0");
    for (const std::int16_t nobody : {-1, 2, 3}) {
        server.SendData(nobody, "x"), server.KillClient(nobody);
        EXPECT_TRUE(server.Data(nobody) == nullptr && server.RemoteIP(nobody).empty());
    }
    EXPECT_TRUE(test::ErrorOf([&] { server.SetMsgWnd(nullptr); }).starts_with("382 "));
    SocketServer second({nullptr, nullptr, nullptr});
    EXPECT_TRUE(test::ErrorOf([&] { second.Init(server.LocalPort(), "127.0.0.1"); }).starts_with("10048 "));
    server.Init(0, "127.0.0.1");
    EXPECT_TRUE(RunUntil([&] { return a->sink.Has("Closed") && b->sink.Has("Closed"); }));
    EXPECT_EQ(server.MaxClientID(), -1);
    Happens("");
}

TEST_F(ServerTest, SilentClientsAreClosed) {
    auto punctual = Join("0");  // exactly one interval old at the first check
    clock.Advance(1000);
    auto silent = Join("1"), incomplete = Join("2");
    clock.Advance(59000);
    Happens("");
    for (int half = 0; half < 20; ++half) {
        punctual->socket->SendData(MakeFrame(""));
        if (half == 0) incomplete->socket->SendData("\5");  // never a whole frame
        Settle();
        EXPECT_EQ(test::Logged("Idle timeout for connection, closing."), half > 1);
        clock.Advance(30000);
        Happens(half == 1 ? "Disconnected1|Disconnected2|" : "");
    }
    EXPECT_TRUE(RunUntil([&] { return silent->sink.Has("Closed"); }));
}

TEST_F(ServerTest, Frames) {
    auto a = Join("0"), b = Join("1");
    a->socket->SendData(MakeFrame("one") + MakeFrame("") + MakeFrame("two"));
    Happens("Message0 one|Message0 two|");
    server.SendData(1, Text("\0PONG\0", 6));
    EXPECT_TRUE(RunUntil([&] { return b->sink.received == Text("\6\0\0\0\0PONG\0", 10); }));
    for (const Text& bytes : {LongToString(600000) + Text(kInputBufferLimit - 3, 'x'), LongToString(-1)}) {
        a->socket->SendData(bytes);
        Happens("Disconnected0|");
        a = Join("0");
    }
    EXPECT_EQ(b->socket->State(), SocketState::Connected);
}

TEST_F(ServerTest, TheOwnerMayKillInsideAnEvent) {
    act = [&](std::int16_t id) { server.KillClient(id); };
    for (const Text event : {"Connected", "Message", "Disconnected"}) {
        when = event;
        auto client = Join("0");
        if (event != "Connected") client->socket->SendData(MakeFrame("one") + MakeFrame("two"));
        Settle();
        client.reset();
        Happens(event == "Connected" ? ""
                : event == "Message" ? "Message0 one|"
                                     : "Message0 one|Message0 two|Disconnected0|");
        EXPECT_EQ(server.RemoteIP(0), "");
    }
    clock.Advance(1);
    auto idle = Join("0");
    test::TestSocket newcomer;
    newcomer.socket->Connect("127.0.0.1", server.LocalPort());  // takes the slot while it is freed
    when = "Disconnected";
    clock.Advance(120000);
    EXPECT_TRUE(RunUntil([&] { return server.ConnectedClients() == 1; }, 200));
}

TEST_F(ServerTest, AnOwnerThatFailsHarmsNobody) {
    act = [](std::int16_t) { throw Error(5, "Owner", "boom"); };
    for (const char* event : {"Connected", "Message", "Disconnected"}) {
        when = event;
        auto client = Join("0");
        client->socket->SendData(MakeFrame("one") + MakeFrame("two"));
        Happens("Message0 one|Message0 two|");
        client.reset();
        Happens("Disconnected0|");
        EXPECT_EQ(server.RemoteIP(0), "") << event;
    }
}

}  // namespace
}  // namespace rvl
