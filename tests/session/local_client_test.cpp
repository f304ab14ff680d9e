#include "session/local_client.h"

#include "platform/event_loop.h"
#include "platform/identity.h"
#include "runtime/folder_paths.h"
#include "runtime/system_information.h"
#include "tests/session/hub_test.h"

namespace rvl {
namespace {

using test::Logged;

/// Writes down what it is told, then runs what the test wants done inside it.
struct RecordingOwner : ConnectionOwner {
    void OnConnected() override { Note("connected"); }
    void OnConnectionLost() override { Note("lost"); }
    void OnConnectFailed() override { Note("failed"); }
    void OnMessage(const Text& command, const std::vector<Text>& params) override {
        Note(test::Swap(JoinParameters({command, JoinParameters(params)}), '\0', '|'));
    }
    void Note(const Text& event) {
        trace += event + "\n";
        if (const auto action = std::exchange(once, nullptr)) action();
    }
    Text Trace() { return std::exchange(trace, ""); }

    Text trace;
    std::function<void()> once;
};

class LocalClientTest : public test::HubTest {
 protected:
    void SendToClient(const Text& command, const Text& params) {
        static_cast<LocalSessions&>(hub).SendToClientEx(0, "", command, test::Swap(params, '|', '\0'));
    }

    RecordingOwner owner;
    LocalClient client{LocalClient::Role::Helper, hub.LocalPort()};
};

TEST_F(LocalClientTest, LogsItsUserIn) {
    client.Connect(owner);
    test::Settle();
    EXPECT_EQ(owner.Trace(), "connected\n");
    EXPECT_TRUE(Logged(client0 + "Client Helper connected: " + FullUsername()));
    const auto row = service.database.OpenRecordset("SELECT * FROM UserPaths");
    EXPECT_EQ(TextOf(row->Field("FullUsername")), FullUsername());
    EXPECT_EQ(TextOf(row->Field("LocalSettingsAppDataPath")), UserLocalSettingsAppDataPath());
    EXPECT_EQ(TextOf(row->Field("DesktopPath")), DesktopPath());
    EXPECT_EQ(TextOf(row->Field("StartMenuPath")), StartMenuProgramsPath());
}

TEST_F(LocalClientTest, MessagesArriveInOrderAlsoInsideAModalHandler) {
    client.Connect(owner);
    test::Settle();
    owner.once = nullptr;
    owner.Trace();
    SendToClient("ONE", "a||b");
    owner.once = [this] {
        SendToClient("TWO", "");
        test::Settle();
        owner.Note("end of one");
    };
    test::Settle();
    EXPECT_EQ(owner.Trace(), "ONE|a||b\nTWO|\nend of one\n");
    SendToClient("PASS_THROUGH", "inner|x|y");
    test::Settle();
    EXPECT_EQ(owner.Trace(), "INNER|x|y\n");
}

TEST_F(LocalClientTest, ConnectsAgainAndStaysSilentOnceClosed) {
    client.Connect(owner);
    test::Settle();
    hub.Close();
    test::Settle();
    client.SendData("ANY", {});
    EXPECT_TRUE(Logged("Sending message while no socket"));
    clock.Advance(5000);
    test::Settle();
    EXPECT_EQ(owner.Trace(), "connected\nlost\nfailed\n");
    client.Close();
    clock.Advance(60000);
    test::Settle();
    EXPECT_EQ(owner.Trace(), "");
}

TEST_F(LocalClientTest, SendingBeforeTheConnection) {
    LocalClient switchboard(LocalClient::Role::UI, hub.LocalPort());
    switchboard.SendData("ANY", {});
    EXPECT_TRUE(Logged("Sending message while no socket"));
    switchboard.Connect(owner);
    switchboard.SendData("ANY", {});
    EXPECT_TRUE(Logged("Sending message while disconnected"));
}

}  // namespace
}  // namespace rvl
