#include "session/start_frontend_process.h"

#include <gtest/gtest.h>

#include "tests/session/switchboard_fakes.h"
#include "tests/support/fake_dialogs.h"
#include "tests/support/virtual_clock.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using test::Logged;

const Text kTryRestarting =
    "Try restarting your computer and contact your system adminstrator if the problem persists.";
const Text kUnable = "Unable to start \"A\" & <B>.\r\n\r\n" + kTryRestarting;

/// A process whose window has just been shown.
struct Scene {
    Scene() {
        test::ClearLog();
        process.ShowModal(7, title);
    }
    void Hear(std::initializer_list<const char*> messages) {
        for (const char* message : messages)
            connection.Hear(message);
    }
    void LogIn() {
        connection.Establish();
        Hear({"FRONTEND_LIST_BEGIN", "FRONTEND_ENTRY|1", "FRONTEND_LIST_END"});
    }

    const Text title = "\"A\" & <B>";
    test::VirtualClock clock;
    test::FakeDialogs dialogs;
    test::ScriptedConnection connection;
    test::ShownStartFrontend view;
    StartFrontendProcess process{connection, view};
};

class StartFrontendProcessTest : public testing::Test, protected Scene {};

TEST_F(StartFrontendProcessTest, StartsAndQuits) {
    EXPECT_EQ(view.shown, title + "|" + title + " is loading, please wait...|shown");
    connection.Establish();
    Hear({"SERVER_AVAILABLE|1", "FRONTEND_LIST_BEGIN", "FRONTEND_ADD", "FRONTEND_REMOVE", "UPDATED_BINARY|x",
          "FRONTEND_UPDATED"});
    EXPECT_EQ(connection.Sent(), "");
    EXPECT_EQ(test::LogContent().find("Unknown"), Text::npos);
    Hear({"OTHER", "FRONTEND_LIST_END", "FRONTEND_LIST_END"});  // a second list after a deployment
    EXPECT_EQ(connection.Sent(), "START_FRONTEND|7|" + title + "\n");
    clock.Advance(29990);
    Hear({"START_FRONTEND_DONE"});
    clock.Advance(49);
    EXPECT_EQ(view.unloaded, 0);
    clock.Advance(100000);
    EXPECT_EQ(view.unloaded, 1);
    EXPECT_TRUE(connection.closed);
    EXPECT_TRUE(dialogs.boxes.empty());
    for (const char* logged : {"Connecting to server", "Unknown server message: OTHER",
                               "Time to go, waiting for safe time to quit..", "Our work here is done."})
        EXPECT_TRUE(Logged(logged)) << logged;
}

TEST_F(StartFrontendProcessTest, ARefusalIsReadBeforeItQuits) {
    LogIn();
    dialogs.onBox = [&] {
        Hear({"START_FRONTEND_DONE"});
        clock.Advance(100000);  // the user is at lunch
        EXPECT_EQ(view.unloaded, 0);
    };
    Hear({"MSGBOX|Not today.||48"});
    clock.Advance(50);
    EXPECT_EQ(view.unloaded, 1);
    EXPECT_EQ(dialogs.boxes.size(), 1u);
}

TEST(StartFrontendFailures, EndTheProcessOnce) {
    const Text code = "\r\n\r\nError code: ";
    const struct {
        std::function<void(Scene&)> fail;
        Text prompt, logged;
    } cases[] = {{[](Scene& scene) { scene.connection.Fail(); }, kUnable + code + "Service Unavailable",
                  "Unable to connect to the service, failing"},
                 {[](Scene& scene) { scene.LogIn(), scene.connection.Lose(); },
                  kUnable + code + "Service Failure", "Connection to client service has been lost, failing"},
                 {[](Scene& scene) { scene.LogIn(), scene.clock.Advance(30000); },
                  kTryRestarting + code + "Service Timeout", "Connecting to server"},
                 {[](Scene& scene) {
                      scene.LogIn();
                      scene.Hear({"SERVER_AVAILABLE|0", "SERVER_AVAILABLE|Yes", "SERVER_AVAILABLE|1"});
                      EXPECT_TRUE(scene.dialogs.boxes.empty());
                      scene.Hear({"SERVER_AVAILABLE|0"});
                  },
                  "Server no longer available. Please try again shortly.", "Connecting to server"}};
    for (const auto& [fail, prompt, logged] : cases) {
        SCOPED_TRACE(prompt);
        Scene scene;
        scene.dialogs.onBox = [&scene] {
            EXPECT_TRUE(scene.connection.closed);
            EXPECT_EQ(scene.view.unloaded, 0);
            scene.connection.Sent();
            // as if they had been on their way already
            for (const char* message : {"SERVER_AVAILABLE", "FRONTEND_LIST_END", "MSGBOX", "START_HELPER"})
                scene.connection.owner->OnMessage(message, {"0"});
            scene.connection.owner->OnConnectFailed();
            scene.connection.owner->OnConnectionLost();
            scene.clock.Advance(100000);
            EXPECT_EQ(scene.connection.Sent(), "");
        };
        fail(scene);
        EXPECT_TRUE(Logged(logged));
        ASSERT_EQ(scene.dialogs.boxes.size(), 1u);
        EXPECT_EQ(scene.dialogs.boxes[0].prompt, prompt);
        EXPECT_EQ(scene.dialogs.boxes[0].style, 16);
        EXPECT_EQ(scene.dialogs.boxes[0].title, scene.title);
        EXPECT_EQ(scene.view.unloaded, 1);
    }
}

TEST_F(StartFrontendProcessTest, AWindowThatHasGoneIsNotUnloaded) {
    LogIn();
    dialogs.onBox = [&] { process.Close(); };
    connection.Lose();
    process.Close();
    EXPECT_TRUE(connection.closed);
    EXPECT_EQ(view.unloaded, 0);
}

}  // namespace
}  // namespace rvl
