#include "net/server_locator.h"

#include <gtest/gtest.h>

#include "tests/support/loopback.h"
#include "tests/support/private_network.h"
#include "tests/support/virtual_clock.h"

namespace rvl {
namespace {

using test::Logged;
using test::Settle;

const Text kNul(1, '\0');

class LocatorTest : public test::PrivateNetworkTest, protected ServerLocator::Host {
 protected:
    void SetUp() override {
        PrivateNetworkTest::SetUp();
        test::ClearLog();
        server.socket->SetProtocol(1);
        server.socket->Bind(16378, "");
        locator.Init();
    }

    Text ServerAddress() override { return address; }
    Text DomainController() override { return controller; }
    bool IsConnectedToServer() const override { return connected; }
    void ShowStatus(const Text& text) override { status = text; }
    void ConnectToServer(const Text& host, std::int32_t interval) override {
        connects += host + " " + std::to_string(interval) + "|";
    }

    /// The seconds from now on at which LOCATE was broadcast, twice each time.
    std::vector<int> Rounds(int seconds) {
        std::vector<int> rounds;
        for (int second = 0; second <= seconds; ++second) {
            clock.Advance(second > 0 ? 1000 : 0);
            Settle();
            const Text datagrams = std::exchange(server.sink.received, {});
            if (datagrams == Text("\0LOCATE\0\0LOCATE\0", 16)) rounds.push_back(second);
            EXPECT_TRUE(datagrams.empty() || rounds.back() == second) << second;
        }
        return rounds;
    }

    test::VirtualClock clock;
    Text address, controller, connects, status;
    bool connected = false;
    test::TestSocket server;
    ServerLocator locator{*this};
};

TEST_F(LocatorTest, BroadcastsWithGrowingDelays) {
    locator.LocateServer();
    EXPECT_EQ(status, "Broadcasting...");
    EXPECT_TRUE(Logged("LocateServer() called") && Logged("No domain controller, using broadcast"));
    const std::vector<int> rounds = Rounds(700);
    const int delays[] = {5, 10, 30, 150, 150, 150};  // and at most one tick more each
    ASSERT_GE(rounds.size(), 7u);
    EXPECT_EQ(rounds[0], 0);
    for (std::size_t round = 0; round < 6; ++round)
        EXPECT_EQ((rounds[round + 1] - rounds[round]) / 5 * 5, delays[round]);
    locator.Stop();
    EXPECT_EQ(Rounds(400), std::vector<int>{});
    ServerLocator::BroadcastRetryDelay(5);
    EXPECT_NE(test::LogContent().find("Assert failed: Invalid ServerDiscoveryMethod"), Text::npos);
}

TEST_F(LocatorTest, AKnownServerIsTriedFirst) {
    const std::tuple<Text, Text, Text> rows[] = {{"10.0.0.5", "fixed:10.0.0.5", "10.0.0.5 60000|"},
                                                 {"localhost", "fixed:localhost", "localhost 1000|"},
                                                 {"", "domain:DC1", "DC1 30000|"}};
    controller = "DC1";
    for (const auto& [setting, method, expected] : rows) {
        address = setting;
        connects.clear();
        locator.Restart();
        EXPECT_EQ(locator.DiscoveryMethod(), method);
        EXPECT_EQ(status, "Connecting to " + method.substr(method.find(':') + 1));
        const std::vector<int> rounds = Rounds(600);
        EXPECT_EQ(connects, expected);
        EXPECT_EQ(rounds.empty() ? 0 : rounds[0] / 5, address.empty() ? 1 : 0) << method;
    }
    EXPECT_TRUE(Logged("Using fixed server address: 10.0.0.5"));
    EXPECT_TRUE(Logged("Attempting to connect to domain controller: DC1"));
}

TEST_F(LocatorTest, Replies) {
    const Text reply = kNul + "LOCATE_REPLY" + kNul, full = "SRV" + kNul + kNul + "3",
               unknown = "Unknown UDP message from 127.0.0.1:16378: ";
    const std::tuple<Text, Text, Text> rows[] = {
        {reply + "SRV" + kNul + "2", "", "UDP 127.0.0.1:16378: <-- " + reply + "SRV" + kNul + "2"},
        {kNul + "LOCATE" + kNul, "", unknown + kNul + "LOCATE" + kNul},
        {"\x01\xFF", "", unknown + "01 00 FF 00"},
        {"ctx" + kNul + " locate_Reply " + kNul + full, "127.0.0.1 30000|",
         "Found server via broadcast: SRV @ 127.0.0.1"},
        {reply + full, "", "UDP 127.0.0.1:16378: <-- " + reply + full}};  // a second server
    locator.LocateServer();
    for (const auto& [datagram, expected, log] : rows) {
        connects.clear();
        server.socket->SendTo("127.0.0.1", locator.Port(), datagram);
        Settle();
        EXPECT_EQ(connects, expected);
        EXPECT_TRUE(Logged(log)) << log;
    }
    EXPECT_EQ(locator.DiscoveryMethod(), "broadcast:127.0.0.1");
    locator.Restart();
    for (const bool live : {true, false}) {
        EXPECT_EQ(connects, "");  // a late reply does not take a live link away
        connected = live;
        server.socket->SendTo("127.0.0.1", locator.Port(), reply + full);
        Settle();
    }
    EXPECT_EQ(connects, "127.0.0.1 30000|");
}

}  // namespace
}  // namespace rvl
