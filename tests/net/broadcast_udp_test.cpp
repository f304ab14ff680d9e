#include "net/broadcast_udp.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "platform/socket_endpoint.h"
#include "tests/support/loopback.h"
#include "tests/support/private_network.h"
#include "tests/support/virtual_clock.h"
#include "util/ipv4.h"

namespace rvl {
namespace {

using platform::AddressRow;
using test::Settle;

constexpr std::uint32_t kInterval = 5000;

AddressRow Row(const Text& address, const Text& mask) {
    return {ParseDotted(address).value(), ParseDotted(mask).value(), 1, 0};
}

class BroadcastTest : public test::PrivateNetworkTest {
 protected:
    void SetUp() override {
        PrivateNetworkTest::SetUp();
        receiver.socket->SetProtocol(1);
        receiver.socket->Bind(0, "");
        receiver.sink.on["DataReceived"] = [this] { senders += receiver.socket->RemoteIP() + " "; };
    }

    /// Sockets of several addresses have the same port, as they have on every system.
    void SkipWithoutSharedPorts() {
        platform::SocketEndpoint first, second;
        platform::Ipv4Endpoint one{*ParseDotted("127.0.0.1"), 0}, two{*ParseDotted("127.0.0.2"), 0};
        ASSERT_EQ(
            first.Open(platform::Protocol::Udp) + first.Bind(one) + second.Open(platform::Protocol::Udp), 0);
        first.LocalPort(two.port);
        if (second.Bind(two) != 0) GTEST_SKIP() << "Wine lets only one address have a UDP port";
    }

    Text SendersOfBroadcast() {
        broadcast.Broadcast(receiver.socket->LocalPort(), "text");
        Settle();
        return std::exchange(senders, {});
    }

    test::VirtualClock clock;
    test::TestSocket receiver;  ///< on all interfaces
    Text senders, received;
    int reads = 0;
    std::vector<AddressRow> table = {Row("127.0.0.1", "255.0.0.0"), Row("127.0.0.2", "255.255.255.0")};
    BroadcastUDP broadcast{[this](const Text& ip, std::uint16_t port, const Text& datagram) {
                               received = ip + ":" + std::to_string(port) + " " + datagram;
                           },
                           [this] {
                               if (++reads == 100) throw Error(5, "Table", "unreadable");
                               return table;
                           }};
};

TEST_F(BroadcastTest, InterfaceEntries) {
    const InterfaceEntry entry = MakeInterfaceEntry(Row("172.16.99.1", "255.255.240.0"));
    EXPECT_EQ(DottedText(entry.broadcast) + " " + DottedText(entry.network), "172.16.111.255 172.16.96.0");
}

TEST_F(BroadcastTest, OneCopyThroughEveryUsableInterface) {
    SkipWithoutSharedPorts();
    if (IsSkipped()) return;
    ASSERT_TRUE(broadcast.Init(0, kInterval));
    const std::uint16_t port = broadcast.Port();
    broadcast.Shutdown();
    for (const char* unusable : {"0.0.0.0", "255.255.255.255", "192.0.2.1"})  // the last cannot be bound
        table.insert(table.begin(), Row(unusable, "255.255.255.0"));
    test::TestSocket taken;
    taken.socket->SetProtocol(1);
    taken.socket->Bind(port, "127.0.0.2");
    ASSERT_TRUE(broadcast.Init(port, kInterval));
    EXPECT_EQ(SendersOfBroadcast(), "127.0.0.1 ");
    EXPECT_NE(test::LogContent().find("via BroadcastUDP.BindInterface"), Text::npos);
    taken.socket->Reset();
    EXPECT_EQ(SendersOfBroadcast(), "127.0.0.1 127.0.0.2 ");  // tried again
    EXPECT_EQ(receiver.sink.received, "texttexttext");        // no length before it
    EXPECT_EQ(receiver.socket->RemotePort(), port);
    receiver.socket->SendTo("127.0.0.2", port, "answer");
    Settle();
    EXPECT_EQ(received, "127.0.0.1:" + std::to_string(receiver.socket->LocalPort()) + " answer");
}

TEST_F(BroadcastTest, RepliesGoWhereTheNetworkHasNoOtherBit) {
    SkipWithoutSharedPorts();
    if (IsSkipped()) return;
    table = {Row("127.0.0.1", "255.0.0.0"), Row("127.1.2.3", "255.255.0.0")};
    ASSERT_TRUE(broadcast.Init(0, kInterval));
    for (const char* host :
         {"127.0.0.9", "127.1.0.9", "127.3.0.9", "no address"}) {  // the mask plays no part
        broadcast.Reply(host, receiver.socket->LocalPort(), "x");
        Settle();
        senders += "| ";
    }
    EXPECT_EQ(senders, "127.0.0.1 | 127.0.0.1 127.1.2.3 | 127.0.0.1 127.1.2.3 | | ");
}

TEST_F(BroadcastTest, ChangedInterfacesGetNewSocketsOnTheSamePort) {
    SkipWithoutSharedPorts();
    if (IsSkipped()) return;
    ASSERT_TRUE(broadcast.Init(0, kInterval));
    const std::uint16_t port = broadcast.Port();
    const std::pair<std::function<void()>, Text> rows[] = {
        {[] {}, "127.0.0.1 127.0.0.2 "},
        {[&] { table.push_back(Row("127.0.0.3", "255.0.0.0")); }, "127.0.0.1 127.0.0.2 127.0.0.3 "},
        {[&] { table[0].address = *ParseDotted("127.0.0.9"); }, "127.0.0.9 127.0.0.2 127.0.0.3 "},
        {[&] { table[0].mask = *ParseDotted("255.255.0.0"); }, "127.0.0.9 127.0.0.2 127.0.0.3 "},
        {[&] { table[2].flags = 7; }, "127.0.0.9 127.0.0.2 127.0.0.3 "},
        {[&] { table.clear(); }, ""},
        {[&] { table = {Row("127.0.0.2", "255.0.0.0")}; }, "127.0.0.2 "}};
    for (const auto& [change, expected] : rows) {
        reads = 0;
        change();
        clock.Advance(kInterval);
        EXPECT_EQ(reads, &change == &rows[0].first ? 1 : 2);  // one to compare, one more to begin anew
        EXPECT_EQ(SendersOfBroadcast(), expected);
        EXPECT_EQ(broadcast.Port(), port);
    }
    table.clear();
    reads = 98;  // it can be compared, but not read again
    clock.Advance(kInterval);
    EXPECT_NE(test::LogContent().find("Assert failed: Failed to reinitialize BroadcastUDP"), Text::npos);
    clock.Advance(kInterval);
    EXPECT_GT(reads, 100);
    broadcast.Shutdown();
    clock.Advance((reads = 0) + kInterval);
    EXPECT_EQ(reads, 0);
}

}  // namespace
}  // namespace rvl
