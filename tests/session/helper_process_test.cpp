#include "session/helper_process.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "runtime/process_state.h"
#include "session/window_tags.h"
#include "tests/session/fake_desktop.h"
#include "tests/support/fake_dialogs.h"
#include "tests/support/virtual_clock.h"
#include "tests/support/workstation.h"
#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using test::Logged;

/// The service and the helper's windows: writes down what is sent, as "command|parameters", and shown.
struct Surroundings : ServiceConnection, HelperWindows {
    void Connect(ConnectionOwner& to) override { owner = &to; }
    void Close() override { done += "closed\n"; }
    bool IsConnected() const override { return true; }
    void SendData(const Text& command, const std::vector<Text>& params) override {
        Text line = JoinParameters(params) + "\n";
        std::ranges::replace(line, '\0', '|');
        done += command + "|" + line;
        if (onSend) std::exchange(onSend, {})();
    }
    void LoadHelperWindow(const Text& caption, bool shown) override {
        done += caption + (shown ? "!\n" : "\n");
    }
    void UnloadHelperWindow() override { done += "unload\n"; }
    void OpenAdministratorMessage(const AdministratorMessageOrder& o) override {
        done += NumberText(o.frontendId) + " " + HandleText(o.accessWindow) + " " + o.title + " " +
                NumberText(o.seconds) + (o.noContinue ? " stop " : " go ") + o.message + "\n";
    }
    bool IsNewVersionNoticeOpen(std::int32_t frontendId) const override { return frontendId == openNotice; }
    void OpenNewVersionNotice(std::int32_t frontendId, const Text& name) override {
        openNotice = frontendId;
        done += "notice " + name + "\n";
    }
    Text Done() { return std::exchange(done, ""); }

    ConnectionOwner* owner = nullptr;
    Text done;
    std::int32_t openNotice = 0;
    std::function<void()> onSend;
};

class HelperProcessTest : public testing::Test {
 protected:
    HelperProcessTest() {
        for (const char* file : {"/access.exe", "/a", "/b", "/c"})
            test::WriteHostFile(test::DriveC() + file, "");
        test::ClearLog();
        State().ApplicationTitle = "Title";
        helper.Load();
        around.Done();
    }

    Text Says(const Text& command, Text params = "") {
        std::ranges::replace(params, '|', '\0');
        around.owner->OnMessage(command, SplitParameters(params));
        return around.Done();
    }
    void Start(const Text& id, const Text& database, const Text& access = "C:\\access.exe") {
        Says("START_FRONTEND", id + "|" + id + "1|N|" + access + "|" + database + "|w d||p");
    }
    static Text Started(const Text& idAndWindow, const Text& elapsed, const Text& database,
                        const Text& version) {
        return "FRONTEND_START|" + idAndWindow + "|" + elapsed + "|11.0.8166|" + database + "|" + version +
               "\n";
    }
    Text CheckedNow() {
        helper.CheckForAccessWindows();
        return around.Done();
    }

    test::VirtualClock clock;
    test::FakeDialogs dialogs;
    test::FakeDesktop desktop;
    Surroundings around;
    HelperProcess helper{around, desktop, around, [](const Text& path) { return path == "good"; }};
};

TEST_F(HelperProcessTest, Life) {
    State().DebugMode = true;
    helper.Load();
    State().DebugMode = false;
    helper.QueryUnload(UnloadMode::SessionEnding);
    desktop.AddAccess(9, "C:\\a");
    clock.Advance(5000);
    EXPECT_EQ(around.Done(), "Title Helper Helper Debug Mode!\nclosed\n");
    EXPECT_TRUE(State().SuppressErrorDialog && Logged("Client Helper exiting (Session Ending)"));
}

TEST_F(HelperProcessTest, Orders) {
    desktop.AddAccess(9, "C:\\a");
    TagFrontend(desktop, 9, 5);
    CheckedNow();
    const Text invalid = "Invalid parameters on ";
    const struct {
        Text command, params, done, logged;
    } cases[] = {{"UPDATED_BINARY", "", "", invalid + "UPDATED_BINARY"},
                 {"START_FRONTEND", "1|2|3|4|5|6|7", "", invalid + "START_FRONTEND"},
                 {"CLOSE_FRONTEND", "1|2|3|4|5", "", invalid + "CLOSE_FRONTEND"},
                 {"NEW_VERSION", "5", "", invalid + "NEW_VERSION"},
                 {"OTHER", "", "", "Unknown server message: OTHER"},
                 {"UPDATED_BINARY", "bad", "", ""},
                 {"UPDATED_BINARY", "good|more", "unload\n", ""},
                 {"TERMINATE", "", "unload\n", "Terminating on request of service"},
                 {"CLOSE_FRONTEND", "5|-7|Orders|x|Yes|<b>|more", "5 -7 Orders 0 stop <b>\n", ""},
                 {"NEW_VERSION", "6|Stock", "", ""},
                 {"NEW_VERSION", "5|Orders", "notice Orders\n", ""},
                 {"NEW_VERSION", "5|Orders", "", ""}};
    for (const auto& [command, params, done, logged] : cases) {
        EXPECT_EQ(Says(command, params), done) << command << params;
        EXPECT_TRUE(logged.empty() || Logged(logged)) << logged;
    }
    test::ClearLog();
    EXPECT_EQ(Says("SERVER_AVAILABLE", "1") + Says("FRONTEND_UPDATED") + test::LogContent(), "");
    Says("MSGBOX", "Hello");
    EXPECT_EQ(dialogs.boxes.back().prompt + dialogs.boxes.back().title, "HelloTitle Helper");
}

TEST_F(HelperProcessTest, Tags) {
    desktop.SetProperty(9, "RVL_FrontendID", 5);
    EXPECT_EQ(FrontendIdOf(desktop, 9), 5);
    desktop.SetProperty(9, "RVL_FrontendID_Backup", 7);
    EXPECT_EQ(FrontendIdOf(desktop, 9), 7);
    TagStartTick(desktop, 9, 0x1FFFFFFFE);
    EXPECT_EQ(desktop.Property(9, "RVL_StartTick_High") + desktop.Property(9, "RVL_StartTick_Low"),
              0xFFFFFFFF);
    EXPECT_EQ(StartTickOf(desktop, 9), 0x1FFFFFFFE);
}

TEST_F(HelperProcessTest, Reports) {
    for (const WindowHandle window : {20U, 9U, 0x80000000U, 30U, 7U})
        desktop.AddAccess(window, "C:\\a");
    desktop.accesses[30].currentProject.reset();
    desktop.accesses[9].build = "";
    desktop.classes[7] = "Other";
    TagFrontend(desktop, 20, 5);
    TagFrontendVersion(desktop, 20, 51);
    TagStartTick(desktop, 20, 999000);
    clock.Advance(1000);
    const Text all = Started("0|-2147483648", "0", "C:\\a", "0") + "FRONTEND_START|0|9|0|11.0|C:\\a|0\n" +
                     Started("5|20", "2000", "C:\\a", "51");
    EXPECT_EQ(around.Done() + CheckedNow(), all);
    around.owner->OnConnected();
    EXPECT_EQ(around.Done(), all);
    EXPECT_EQ(Says("RESET_ACTIVE_FRONTENDS_STATUS"), all);
    desktop.classes.clear();
    EXPECT_EQ(CheckedNow(), "FRONTEND_END|0|-2147483648\nFRONTEND_END|0|9\nFRONTEND_END|5|20\n");
}

TEST_F(HelperProcessTest, AnotherDatabase) {
    desktop.AddAccess(9, "C:\\a");
    TagFrontend(desktop, 9, 5);
    TagFrontendVersion(desktop, 9, 51);
    TagStartTick(desktop, 9, 1);
    EXPECT_EQ(CheckedNow(), Started("5|9", "999999", "C:\\a", "51"));
    desktop.accesses[9].currentProject.reset();
    EXPECT_EQ(CheckedNow(), "FRONTEND_END|5|9\n");
    EXPECT_TRUE(Logged("Access instance 9 changed files"));
    desktop.AddAccess(9, "C:\\b");
    EXPECT_EQ(CheckedNow(), Started("0|9", "0", "C:\\b", "51"));
    desktop.AddAccess(9, "C:\\B");
    EXPECT_EQ(CheckedNow(), "FRONTEND_END|0|9\n" + Started("0|9", "0", "C:\\B", "51"));
}

TEST_F(HelperProcessTest, EventsWhileReporting) {
    desktop.AddAccess(8, "C:\\a");
    desktop.AddAccess(9, "C:\\a");
    const Text both = Started("0|8", "0", "C:\\a", "0") + Started("0|9", "0", "C:\\a", "0");
    around.onSend = [&] { helper.CheckForAccessWindows(); };
    EXPECT_EQ(CheckedNow(), both);
    desktop.classes.erase(8);
    desktop.AddAccess(7, "C:\\c");
    const Text another = Started("0|7", "0", "C:\\c", "0");
    around.onSend = [&] { around.owner->OnConnected(); };
    EXPECT_EQ(CheckedNow(), "FRONTEND_END|0|8\n");
    EXPECT_EQ(CheckedNow(), another + Started("0|9", "0", "C:\\a", "0"));
}

TEST_F(HelperProcessTest, KnownDialog) {
    const Text known = "You can't make changes to this";
    const Text cases[][4] = {{"Microsoft Access", "MSOUNISTAT", known, "close 3|close 4|"},
                             {"Microsoft Access", "MSOUNISTAT", "you can't make changes", ""},
                             {"Microsoft Access", "Static", known, ""},
                             {"Other", "MSOUNISTAT", known, ""}};
    desktop.classes = {{1, "Button"}, {3, "#32770"}, {4, "#32770"}, {5, "#32770"}};
    desktop.children = {{3, {1, 2}}, {4, {1, 2}}};
    desktop.foreground = 3;
    for (const auto& [title, childClass, message, done] : cases) {
        desktop.classes[2] = childClass;
        desktop.texts = {{1, known}, {2, message}, {3, title}, {4, title}, {5, "Microsoft Word"}};
        CheckedNow();
        EXPECT_EQ(desktop.Done(), done) << title << childClass << message;
    }
}

TEST_F(HelperProcessTest, CannotStart) {
    const Text cases[][3] = {{"C:\\d.exe", "C:\\d", "Microsoft Access is not installed."},
                             {"C:\\access.exe", "C:\\d", "The frontend is not installed."},
                             {"C:\\access.exe", "C:\\a", "Microsoft Access is currently unavailable."}};
    desktop.refusesToStart = true;
    for (const auto& [access, database, problem] : cases) {
        Start("5", database, access);
        EXPECT_EQ(dialogs.boxes.back().prompt + NumberText(dialogs.boxes.back().style), problem + "16");
    }
    EXPECT_TRUE(Logged(R"(Attempting to launch "N" at "C:\a" using "C:\access.exe" (ID #5/51))"));
}

TEST_F(HelperProcessTest, Launch) {
    Start("5", "C:\\a");
    EXPECT_EQ(desktop.processes[0]->commandLine, R"("C:\access.exe" "C:\a" /wrkgrp "w d" /pwd "p")");
    clock.Advance(3600000);
    Start("5", "c:\\A");
    desktop.activationsToRegister = 1;
    desktop.AddAccess(0xABC, "C:\\a");
    desktop.processes[0]->window = 0xABC;
    clock.Advance(500);
    EXPECT_EQ(desktop.Done(), "register 2748|activate 2748|front 2748|");
    EXPECT_TRUE(Logged("Access hWnd = 0x00000ABC (2748)"));
    EXPECT_EQ(around.Done(), Started("5|2748", "0", "C:\\a", "51"));
    Start("5", "c:\\A");
    EXPECT_EQ(desktop.Done(), "front 2748|");
    EXPECT_TRUE(Logged("Instance already running, we'll just foreground it"));
    EXPECT_EQ(desktop.processes.size(), 1);
}

TEST_F(HelperProcessTest, LaunchesThatEndWithoutAWindow) {
    for (const Text file : {"a", "b", "c"})
        Start("5", "C:\\" + file);
    desktop.processes[0]->exitCode = 3221225477;
    desktop.processes[1]->exitCode.reset();
    desktop.processes[2]->window = 9;  // gone when it is to be tagged
    clock.Advance(500);
    EXPECT_TRUE(Logged("Access quit with error code #3221225477") && Logged("Access seems to have quit") &&
                Logged("Unable to locate Access instance in ROT") && FrontendIdOf(desktop, 9) == 0);
    test::ClearLog();
    clock.Advance(5000);
    EXPECT_EQ(test::LogContent(), "");
}

/// Both windows appear between two looks of the launcher; the check comes first and must know them.
TEST_F(HelperProcessTest, TwoLaunchesAndAnEarlyCheck) {
    Start("5", "C:\\a");
    Start("6", "C:\\b");
    desktop.AddAccess(desktop.processes[0]->window = 8, "C:\\a");
    desktop.AddAccess(desktop.processes[1]->window = 9, "C:\\b");
    EXPECT_EQ(CheckedNow(), Started("5|8", "0", "C:\\a", "51") + Started("6|9", "0", "C:\\b", "61"));
    clock.Advance(5000);
    EXPECT_EQ(around.Done(), "");
}

}  // namespace
}  // namespace rvl
