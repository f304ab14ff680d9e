#include "session/local_hub.h"

#include "tests/session/hub_test.h"

namespace rvl {
namespace {

using test::Logged;
using test::LoginOf;

class LocalHubTest : public test::HubTest {};

TEST_F(LocalHubTest, Handshakes) {
    const struct {
        Text hello, rejection;
    } cases[] = {{"c|LOGIN|x", "Invalid initial command: LOGIN"},
                 {"|PASS_THROUGH|MKDIR", "Invalid initial command: PASS_THROUGH"},
                 {"HELLO", "Invalid initial command: "},
                 {"|HELLO|RVL|UI", "Invalid handshake"},
                 {"|HELLO|rvl|ui|", "Invalid protocol: rvl"},
                 {"|HELLO|RVL|ui|", "Invalid version"},
                 {"|HELLO|RVL|ui|1.0.0", "Invalid remote type: ui"},
                 {"c| hello |RVL|HELPER|x|more", ""}};
    service.linkUp = true;
    for (const auto& [hello, rejection] : cases) {
        SCOPED_TRACE(hello);
        test::ClearLog();
        Peer peer = Join();
        EXPECT_TRUE(Logged(client0 + "Incoming Connection"));
        EXPECT_EQ(peer->Says(hello), "");
        EXPECT_TRUE(Logged(client0 + "<-- " + test::Swap(hello, '|', '\0')));
        EXPECT_EQ(peer->IsClosed(), !rejection.empty());
        EXPECT_EQ(Logged(closing + rejection), !rejection.empty());
        Leave(peer);
        EXPECT_EQ(Logged(client0 + "Disconnected"), rejection.empty());
    }
    EXPECT_EQ(service.Sent(), "");
}

TEST_F(LocalHubTest, PassThroughBeforeTheLogin) {
    const Peer other = Join(), peer = Join("UI");
    const struct {
        Text message, forwarded, refused;
    } cases[] = {{"hist|PASS_THROUGH|get_history", "1#hist|GET_HISTORY|", "hist|*|get_history"},
                 {"|pass_through |Get_It|a|b||", "1#|GET_IT|a|b||", "|*|Get_It|a|b||"},
                 {"x#y|PASS_THROUGH", "1#x#y||", "x#y|*|"}};
    for (auto [message, forwarded, refused] : cases) {
        service.linkUp = true;
        EXPECT_EQ(peer->Says(message), "");
        EXPECT_EQ(service.Sent(), forwarded + "\n");
        service.linkUp = false;
        refused.replace(refused.find('*'), 1, "GENERAL_ERROR|87|Server not connected|PASS_THROUGH");
        EXPECT_EQ(peer->Says(message), refused + "\n");
    }
    EXPECT_TRUE(!peer->IsClosed() && service.Sent().empty());
}

TEST_F(LocalHubTest, NobodyNewDuringAnUpdate) {
    service.pendingUpdate = "C:\\new.exe";
    for (int round = 0; round < 2; ++round) {
        const Peer peer = Join();
        EXPECT_EQ(peer->Heard(), "|UPDATED_BINARY|C:\\new.exe\n");
        EXPECT_TRUE(peer->IsClosed() && Logged(closing + "No new connections while updating"));
    }
}

TEST_F(LocalHubTest, Sending) {
    const Peer peers[] = {Join(), LogIn("UI"), Join("HELPER"), LogIn("HELPER")};
    const auto reached = [&](const Text& name) {
        Text ids;
        for (std::size_t id = 0; id < std::size(peers); ++id)
            if (peers[id]->Heard().ends_with("c|TELL|a|b\n")) ids += std::to_string(id);
        return ids + (Logged(name + ": --> " + test::Swap("c|TELL|a|b", '|', '\0')) ? "" : " not logged");
    };
    const Text params("a\0b", 3);
    hub.SendToAllClientsEx("c", "TELL", params);
    EXPECT_EQ(reached("ALL"), "0123");
    hub.SendToAllHelpersEx("c", "TELL", params);
    EXPECT_EQ(reached("HELPERS"), "23");
    hub.SendToClientEx(0, "c", "TELL", params);
    EXPECT_EQ(reached("#0[127.0.0.1]"), "0");
}

TEST_F(LocalHubTest, ASecondHelloIsAnOrdinaryCommand) {
    Peer known = LogIn("UI"), unknown = Join("UI");
    EXPECT_EQ(known->Says("|HELLO|RVL|UI|1.0.0") + unknown->Says("|HELLO|RVL|UI|1.0.0"), "");
    EXPECT_TRUE(Logged(client0 + "Unknown Client UI message: HELLO") && !known->IsClosed());
    EXPECT_TRUE(Logged("#1[127.0.0.1]: Closing connection: Must login first") && unknown->IsClosed());
}

TEST_F(LocalHubTest, AFailingMessageIsReportedAndTheConnectionStays) {
    const Peer peer = Join("HELPER");
    service.linkUp = true;
    service.database.ExecuteSQL("ALTER TABLE UserPaths RENAME TO Gone");
    const Text login = LoginOf("D\\ann"), in = "frmClientService.m_sckClients_MessageReceived";
    EXPECT_EQ(peer->Says("ctx" + login), "");
    const Text sent = service.Sent(), number = sent.substr(18, sent.find('|', 18) - 18);
    EXPECT_TRUE(sent.starts_with("ctx|GENERAL_ERROR|" + number + "|Error in " + in + ": Error #" + number +
                                 " from Database: ") &&
                sent.ends_with(login + "\n"))
        << sent;
    EXPECT_NE(test::LogContent().find(" via " + in + "\r\n\r\n"), Text::npos);
    service.database.ExecuteSQL("ALTER TABLE Gone RENAME TO UserPaths");
    peer->Says(login);
    EXPECT_EQ(service.Sent(), "|CONNECT|HELPER|0|0|D\\ann|Name|L\\\n");
}

TEST_F(LocalHubTest, TheServerLinkIsAnnouncedToTheLastLoginFirst) {
    const Peer silent = Join("UI"), helper = LogIn("HELPER", "D\\zoe");
    clock.Advance(10);
    const Peer board = LogIn("UI");
    clock.Advance(10);
    const Peer last = LogIn("UI", "D\\bob");
    clock.Advance(5);
    board->Heard();
    service.linkUp = true;
    hub.NotifyServerConnected(true);
    EXPECT_EQ(service.Sent(),
              "|CONNECT|UI|3|5|D\\bob|Name|L\\\n|CONNECT|UI|2|15|D\\ann|Name|L\\\n"
              "|CONNECT|HELPER|1|25|D\\zoe|Name|L\\\n");
    EXPECT_EQ(board->Heard(), "|SERVER_AVAILABLE|1\n|FRONTEND_LIST_BEGIN|\n|FRONTEND_LIST_END|\n");
    hub.NotifyServerConnected(false);
    EXPECT_EQ(board->Heard() + helper->Heard(), "|SERVER_AVAILABLE|0\n|SERVER_AVAILABLE|0\n");
    EXPECT_EQ(silent->Heard() + service.Sent(), "");
}

TEST_F(LocalHubTest, ReleasingALoggedInSessionTellsTheServer) {
    const std::function<void(Peer&)> ends[] = {[](Peer& peer) { peer.reset(); },
                                               [](Peer& peer) { peer->Send("|LOGIN|wrong"); },
                                               [this](Peer&) { hub.Open(0); }};
    for (const Text type : {"UI", "HELPER"})
        for (const auto& end : ends)
            for (const int knownAndLinkUp : {0, 1, 2, 3}) {
                Peer peer = knownAndLinkUp & 1 ? LogIn(type) : Join(type);
                service.linkUp = (knownAndLinkUp & 2) != 0;
                end(peer);
                test::Settle();
                EXPECT_EQ(service.Sent(), knownAndLinkUp == 3 ? "|DISCONNECT|" + type + "|0\n" : "");
                service.linkUp = false;
            }
}

/// Telling the sessions lets events run: who takes the place of one that left must not be taken for gone.
TEST_F(LocalHubTest, APlaceThatChangesHandsWhileTheLinkIsAnnounced) {
    for (int id = 1; id <= 20; ++id)
        Deploy(std::to_string(id) + ", 1, 'D\\zoe', '', '', '', ''");
    Peer old = LogIn("UI");
    clock.Advance(1);
    const Peer last = LogIn("UI", "D\\zoe");
    test::LocalPeer next;
    next.sink.on["Connected"] = [&] { next.Send("|HELLO|RVL|UI|1"), next.Send(LoginOf("D\\bob")); };
    service.onUpgradeCheck = [&] { next.socket->Connect("127.0.0.1", hub.LocalPort()); };
    service.linkUp = true;
    old.reset();
    hub.NotifyServerConnected(true);
    test::Settle();
    const Text sent = service.Sent(), about0 = sent.substr(std::min(sent.rfind("|UI|0"), sent.size()));
    EXPECT_EQ(about0.substr(0, about0.find('\n')), "|UI|0|0|D\\bob|Name|L\\") << sent;
}

}  // namespace
}  // namespace rvl
