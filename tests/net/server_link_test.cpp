#include "net/server_link.h"

#include <gtest/gtest.h>

#include <set>

#include "runtime/system_information.h"
#include "tests/support/loopback.h"
#include "tests/support/private_network.h"
#include "tests/support/virtual_clock.h"
#include "util/digest.h"
#include "util/parameters.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

using test::Logged;
using test::RunUntil;
using test::Settle;

const Text kNul(1, '\0');

class LinkTest : public test::PrivateNetworkTest, protected ServerLink::Owner {
 protected:
    void SetUp() override {
        PrivateNetworkTest::SetUp();
        test::ClearLog();
        peer = std::make_unique<test::Peer>(kServerPort);
        link.InitLocator();
        link.StartLocating();
        clock.Advance(1000);
        ASSERT_TRUE(Connected(1));
    }

    Text ServerAddressSetting() override { return address; }
    void StoreServerAddress(const Text& stored) override { address = stored; }
    WorkstationDescription DescribeWorkstation() override {
        return {"uuid", "PC", "exe", true, "os", "9,10", "pf", "ad"};
    }
    void ServerMessageReceived(Text message) override { told += message + "|"; }
    void ServerLoggedIn() override { told += "login|"; }
    void ServerConnectedChanged(bool connected) override { told += connected ? "up|" : "down|"; }
    void StatusChanged() override {}
    void KeepAliveTick() override {}

    /// True when the n-th connection has greeted.
    bool Connected(std::size_t count) {
        return RunUntil([&] { return peer->connections.size() == count && !peer->Received().empty(); });
    }

    /// Seconds until the server has a message or the owner is told something; more than 400 for never.
    int SecondsOfSilence() {
        peer->TakeMessages();
        messages.clear();
        told.clear();
        int second = 0;
        while (second <= 400 && messages.empty() && told.empty()) {
            clock.Advance(1000), ++second;
            Settle();
            messages = peer->TakeMessages();
        }
        return second;
    }

    test::VirtualClock clock;
    Text address = "127.0.0.1", told;
    std::vector<Text> messages;
    std::unique_ptr<test::Peer> peer;
    ServerLink link{*this};
};

TEST_F(LinkTest, GreetingAndLogin) {
    EXPECT_EQ(peer->Received(), Text("\x17\0\0\0\0HELLO\0RVL\0CLIENT\0"
                                     "1.1.3",
                                     27));
    peer->TakeMessages();
    peer->Last().SendData(MakeFrame(kNul + "HELLO" + kNul + "token"));
    EXPECT_TRUE(RunUntil([&] { return told == kNul + "HELLO" + kNul + "token|"; }));
    link.OnHello({"token", "more"});
    Settle();
    const std::vector<Text> login = SplitParameters(peer->TakeMessages().at(0));
    ASSERT_EQ(login.size(), 13u);
    const Text nonce = login[2].substr(16),
               known = "uuid" + kNul + "PC" + kNul + DomainName() + kNul + "token";
    EXPECT_EQ(login[2], GenerateRVLChecksum(known + nonce) + nonce);
    EXPECT_EQ(login[12], "fixed:127.0.0.1");
    told.clear();
    link.OnLoginOk();
    link.OnLoginOk();
    peer->Last().Reset();
    EXPECT_TRUE(RunUntil([&] { return told == "login|up|login|down|"; })) << told;
    EXPECT_TRUE(Logged("Connected to server") && Logged("Server is connected"));
    EXPECT_TRUE(Logged("Disconnected from server") && Logged("Server is disconnected"));
    clock.Advance(60000);
    EXPECT_TRUE(Connected(2));  // the same host again
}

TEST_F(LinkTest, PingsAreSpreadAnsweredAndMissed) {
    EXPECT_GT(SecondsOfSilence(), 400);  // not before the login
    std::set<int> first;
    for (int login = 0; login < 6; ++login) {
        link.OnLoginOk();
        first.insert(SecondsOfSilence());
        link.OnPong();
    }
    EXPECT_TRUE(*first.begin() >= 1 && *first.rbegin() <= 231 && first.size() > 1);
    const int answered = SecondsOfSilence();
    EXPECT_TRUE(answered >= 300 && answered <= 306) << answered;
    ASSERT_EQ(messages.at(0).substr(0, 6), kNul + "PING" + kNul);
    EXPECT_NEAR(std::stod(messages[0].substr(6)), static_cast<double>(GetTickCountEx()), 1000);
    const int missed = SecondsOfSilence();
    EXPECT_TRUE(missed >= 30 && missed <= 36) << missed;
    EXPECT_TRUE(told == "down|" && Logged("Ping timeout to server"));
    EXPECT_EQ(peer->connections.size(), 2u);  // without waiting
    link.OnLoginOk();
    EXPECT_LE(SecondsOfSilence(), 231);
    EXPECT_TRUE(told.empty() && peer->connections.size() == 2);  // nothing is left of the missing answer
}

TEST_F(LinkTest, TheServerMovesTheWorkstation) {
    link.OnSetServer({});
    EXPECT_TRUE(address.empty() && Logged("Server says to open new connections to <domain/broadcast>"));
    link.OnSetServer({"127.0.0.1", "more"});
    EXPECT_TRUE(Logged("Server says to open new connections to 127.0.0.1"));
    link.OnFindServerAgain();
    EXPECT_TRUE(Connected(2) && !Logged("Disconnected from server"));
}

}  // namespace
}  // namespace rvl
