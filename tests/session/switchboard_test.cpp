#include "session/switchboard.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "runtime/process_state.h"
#include "session/release_date.h"
#include "session/tab_keys.h"
#include "tests/session/switchboard_fakes.h"
#include "tests/support/child_process.h"
#include "tests/support/fake_dialogs.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using test::Logged;

std::string HelpersWord() {
    return test::DriveC() + "/helper";
}

/// A helper that is started here is this very program: it leaves word and ends.
const bool g_noHelper = [] {
    if (!test::StartedAs().ends_with(" -service_helper")) return true;
    test::WriteHostFile(HelpersWord(), "started");
    std::_Exit(0);
}();

/// The log without its times.
Text LogEntries() {
    const Text log = test::LogContent();
    Text entries;
    for (const TextView line : SplitAt(log, "\n"))
        if (const auto end = line.find("] "); end != Text::npos) entries += Text(line.substr(end + 2)) + "\n";
    return entries;
}

class SwitchboardTest : public testing::Test {
 protected:
    SwitchboardTest() {
        test::ClearLog();
        switchboard.Load();
    }
    void Hear(const Text& message) { connection.Hear(message); }
    void HearList(const Text& ids) {
        Hear("FRONTEND_LIST_BEGIN");
        for (const char id : ids)
            Hear(Text("FRONTEND_ENTRY|") + id + "|D\\ann|Name||||10|1.0|||");
        Hear("FRONTEND_LIST_END");
    }
    void AnswerHistory(const Text& id) {
        Hear("FRONTEND_VERSION_HISTORY_BEGIN");
        Hear("FRONTEND_VERSION_HISTORY_ENTRY|" + id + "|11|2.0|A\r\nB|t|soon|x|y|1");
        Hear("FRONTEND_VERSION_HISTORY_ENTRY|" + id + "|10|1.0|<i>|t|2005-03-14 09:30:00|1|1|none");
        Hear("FRONTEND_VERSION_HISTORY_END");
    }
    /// Connected, with the server and the advanced tab showing front end 1.
    void ShowHistory() {
        connection.Establish();
        Hear("SERVER_AVAILABLE|1");
        HearList("123");
        view.tab = SwitchboardView::Tab::Advanced;
        switchboard.FrontendChosen(1);
        AnswerHistory("1");
        EXPECT_EQ(connection.Sent(), asked);
        EXPECT_EQ(view.history, history);
    }
    void UpdateWith(const std::vector<Text>& otherForms) {
        connection.Establish();
        view.forms.insert(view.forms.begin(), otherForms.begin(), otherForms.end());
        Hear("UPDATED_BINARY|C:\\new.exe");
    }

    test::ScriptedConnection connection;
    test::ShownSwitchboard view;
    Text updates;
    bool mayUpdate = true;
    Switchboard switchboard{connection, view, [this](const Text& path) {
                                updates += path;
                                return mayUpdate;
                            }};
    const Text asked = "PASS_THROUGH|FRONTEND_VERSION_HISTORY|1\n";
    const Text history = "2.0|soon|A\r\nB|revoked\n1.0|2005-03-14 09:30|<i>\n";
};

TEST_F(SwitchboardTest, CaptionAndAdvancedTabFollowServiceAndServer) {
    const Text title = "Access Switchboard", loading = title + " [Loading]";
    const Text connecting = title + " [Connecting to server]";
    EXPECT_EQ(State().ApplicationTitle, title);
    EXPECT_EQ(view.caption, loading);
    EXPECT_FALSE(view.enabled);
    const struct {
        Text event, caption;
        bool enabled;
        Text logged;
    } steps[] = {{"up", loading, false, ""},
                 {"FRONTEND_LIST_END", connecting, false, ""},
                 {"SERVER_AVAILABLE|0", connecting, false, ""},
                 {"SERVER_AVAILABLE|1", title, true, "Server is connected\r\n"},
                 {"FRONTEND_LIST_BEGIN", title, true, ""},
                 {"SERVER_AVAILABLE|0", connecting, false, "Server is disconnected\r\n"},
                 {"lost", loading, false, "Connection Lost\r\n"},
                 {"up", loading, false, ""},
                 {"SERVER_AVAILABLE|1", loading, true, "Server is connected\r\n"},
                 {"lost", loading, false, "Connection Lost\r\nServer is disconnected\r\n"},
                 {"up", loading, false, ""},
                 {"FRONTEND_LIST_END", connecting, false, ""}};
    for (const auto& [event, caption, enabled, logged] : steps) {
        SCOPED_TRACE(logged + caption);
        test::ClearLog();
        view.busy = true;
        event == "up" ? connection.Establish() : event == "lost" ? connection.Lose() : Hear(event);
        EXPECT_EQ(view.caption, caption);
        EXPECT_EQ(view.enabled, enabled);
        EXPECT_EQ(LogEntries(), logged);
        EXPECT_EQ(view.busy, event == "up" || event.starts_with("FRONTEND"));
    }
}

TEST_F(SwitchboardTest, MessagesThatCannotBeHandledAreLogged) {
    for (const Text message :
         {"SERVER_AVAILABLE", "FRONTEND_ENTRY|1|2|3|4|5|6|7|8|9|10", "FRONTEND_ADD|1", "FRONTEND_REMOVE",
          "UPDATED_BINARY", "FRONTEND_VERSION_HISTORY_ENTRY|1|2|3|4|5|6|7|8", "FRONTEND_UPDATED"}) {
        Hear(message);
        EXPECT_TRUE(Logged("Invalid parameters on " + message.substr(0, message.find('|')))) << message;
    }
    Hear("GENERAL_ERROR|c|87");
    EXPECT_TRUE(Logged("Unknown server message: GENERAL_ERROR"));
    EXPECT_EQ(view.history + updates + connection.sent, "");
    EXPECT_TRUE(view.items.empty());
}

TEST_F(SwitchboardTest, TheListIsShownAsItComes) {
    const Text name = "<b>\"Auftr\xe4ge\"</b> & Co";
    Hear("FRONTEND_ENTRY|9|u|Old||||1|1|||");
    Hear("FRONTEND_LIST_BEGIN");
    Hear("FRONTEND_ENTRY|1|u|" + name + "|C:\\fe|f|m|10|1.0|a.ico|d|s");
    Hear("FRONTEND_LIST_END");
    Hear("FRONTEND_ADD|2|u|Two|l|f|m|20|2.0||d|s|more");
    ASSERT_EQ(view.items.size(), 2u);
    EXPECT_EQ(view.items[0].second, name + "|1.0|C:\\fe\\a.ico");
    Hear("FRONTEND_REMOVE|1");
    EXPECT_EQ(view.items, (decltype(view.items){{2, "Two|2.0|"}}));
    switchboard.StartFrontend(1, name);
    EXPECT_EQ(connection.sent, "START_FRONTEND|1|" + name + "\n");
    EXPECT_TRUE(Logged("Asking to start frontend #1 \"" + name + "\""));
    view.calls = 0;
    HearList(Text(1000, '5'));
    EXPECT_LE(view.calls, 1002);  // an entry costs no more than itself
}

TEST_F(SwitchboardTest, HistoryIsAskedForAgainWhenItMayHaveChanged) {
    ShowHistory();
    switchboard.FrontendChosen(1);
    Hear("FRONTEND_UPDATED|2");
    view.tab = SwitchboardView::Tab::Switchboard;
    switchboard.TabChanged();
    Hear("FRONTEND_UPDATED|1");
    view.tab = SwitchboardView::Tab::Advanced;
    EXPECT_EQ(connection.Sent(), "");
    const std::function<void()> reloads[] = {[&] { switchboard.TabChanged(); },
                                             [&] { Hear("FRONTEND_UPDATED|1"); },
                                             [&] {
                                                 Hear("SERVER_AVAILABLE|0");
                                                 switchboard.FrontendChosen(2);
                                                 switchboard.TabChanged();
                                                 EXPECT_EQ(connection.sent, "");
                                                 Hear("SERVER_AVAILABLE|1");
                                             }};
    for (const auto& reload : reloads) {
        reload();
        EXPECT_EQ(connection.Sent(), asked);
        EXPECT_EQ(view.history, "");
        EXPECT_TRUE(view.busy);
        AnswerHistory("1");
        EXPECT_EQ(view.history, history);
        EXPECT_FALSE(view.busy);
    }
    connection.onSend = [this] { AnswerHistory("2"); };  // events run while the request is sent
    switchboard.FrontendChosen(2);
    EXPECT_EQ(view.history, history);
    EXPECT_FALSE(view.busy);
}

TEST_F(SwitchboardTest, HistoryGoesWithItsFrontend) {
    const std::function<void()> leaves[] = {[&] { Hear("FRONTEND_REMOVE|1"); }, [&] { HearList("3"); }};
    for (const auto& leave : leaves) {
        ShowHistory();
        Hear("FRONTEND_REMOVE|2");
        HearList("31");
        EXPECT_EQ(view.history, history);
        Hear("FRONTEND_UPDATED|1");
        leave();
        EXPECT_FALSE(view.busy);
        AnswerHistory("1");  // late
        EXPECT_EQ(view.history, "");
        connection.Sent();
        switchboard.TabChanged();
        EXPECT_EQ(connection.Sent(), "");
    }
}

TEST_F(SwitchboardTest, MessageBoxesLetOtherMessagesIn) {
    test::FakeDialogs dialogs;
    connection.Establish();
    dialogs.onBox = [&] {
        Hear("FRONTEND_LIST_END");
        view.busy = true;
        Hear("START_FRONTEND_DONE");
        if (dialogs.boxes.size() < 2) Hear("MSGBOX|Inner|Title|16");
    };
    Hear("MSGBOX|Outer");
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(dialogs.boxes[0].title + dialogs.boxes[1].title, "Access SwitchboardTitle");
    EXPECT_EQ(view.caption, "Access Switchboard [Connecting to server]");
    EXPECT_FALSE(view.busy);
}

TEST_F(SwitchboardTest, StartsTheHelperWithoutTheDebugMarker) {
    test::SetEnvironment("RVL_TEST_CHILD", "1");  // it shares our workstation
    State().DebugMode = true;
    Hear("START_HELPER");
    EXPECT_TRUE(test::RunUntil([] { return test::ReadHostFile(HelpersWord()) == "started"; }));
    EXPECT_TRUE(Logged("Service requested the helper be started"));
    test::UnsetEnvironment("RVL_TEST_CHILD");
}

TEST_F(SwitchboardTest, WithoutAWaitingProcessItGoesOn) {
    mayUpdate = false;
    UpdateWith({"A"});
    EXPECT_EQ(view.forms.size(), 2u);
    EXPECT_TRUE(connection.IsConnected());
    switchboard.QueryUnload(UnloadMode::SessionEnding);
    EXPECT_TRUE(Logged("Client UI exiting (Session Ending)"));
    EXPECT_TRUE(connection.closed);
}

TEST_F(SwitchboardTest, AnUpdateClosesEveryForm) {
    int attempts = 0;
    view.stays = [&](const Text& form) {
        Hear("UPDATED_BINARY|again");
        return form == "B" && ++attempts < 2;
    };
    UpdateWith({"A", "B"});
    EXPECT_EQ(updates, "C:\\new.exe");
    EXPECT_TRUE(view.forms.empty());
    const Text later = "Will close \"frmClientMain\" later\r\n";
    EXPECT_EQ(LogEntries(),
              "There are 3 forms to close\r\nAttempting to close \"A\"\r\n"
              "Attempting to close \"B\"\r\n" +
                  later +
                  "Successfully closed 1 forms\r\nThere are 2 forms to close\r\nAttempting to close "
                  "\"B\"\r\n" +
                  later + "Successfully closed 1 forms\r\nThere are 1 forms to close\r\n" + later +
                  "Successfully closed 0 forms\r\nAttempting to close \"frmClientMain\"\r\n");
}

TEST_F(SwitchboardTest, AFormThatStaysEndsTheProcess) {
    view.stays = [](const Text& form) { return form != "A"; };
    EXPECT_EXIT(UpdateWith({"A", "B"}), testing::ExitedWithCode(0), "");
    EXPECT_TRUE(Logged("Forcing close of switchboard with 2 forms still open"));
}

TEST(ReleaseDate, ShowsDatesShortAndOtherTextsAsTheyCome) {
    const std::pair<Text, Text> cases[] = {{" 2005-03-14 09:30 ", "2005-03-14 09:30"},
                                           {"2004-02-29 00:00:00", "2004-02-29"}};
    for (const auto& [date, shown] : cases)
        EXPECT_EQ(ReleaseDateText(date), shown);
    for (const char* other : {"2005-02-29 10:00:00", "2005-03-14 09:3x", "3/14/2005 9:30:00 AM", ""})
        EXPECT_EQ(ReleaseDateText(other), other);
}

TEST(TabKeys, GoRound) {
    const int cases[][4] = {{0, 2, 0, 1}, {1, 2, 0, 0}, {0, 3, 1, 2}, {2, 3, 1, 1}, {-1, 0, 0, -1}};
    for (const auto& [current, count, backwards, next] : cases)
        EXPECT_EQ(NextTab(current, count, backwards != 0), next);
}

}  // namespace
}  // namespace rvl
