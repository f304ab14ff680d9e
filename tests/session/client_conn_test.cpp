#include "tests/session/hub_test.h"

namespace rvl {
namespace {

using test::Logged;
using test::LoginOf;

class ClientConnTest : public test::HubTest {
 protected:
    ClientConnTest() { std::filesystem::remove_all(test::DriveC() + "/Program Files/Microsoft Office"); }
};

TEST_F(ClientConnTest, Logins) {
    const Text proof = GenerateRVLChecksum("D\\ann");
    const struct {
        Text type, message, reason;
    } cases[] = {{"UI", "|START_FRONTEND|1", "Must login first"},
                 {"HELPER", "|FRONTEND_END|1|2", "Must login first"},
                 {"UI", "|LOGIN|" + proof + "|D\\ann|name", "Invalid login"},
                 {"UI", "|LOGIN|" + proof + "|D\\Ann|name|L\\", "Invalid login"},
                 {"UI", LoginOf(""), "Invalid login"},
                 {"UI", "| login |" + proof + "|D\\ann||", ""},
                 {"HELPER", LoginOf("D\\ann", "|L\\|D\\"), "Invalid login"},
                 {"HELPER", LoginOf("D\\ann", "|L\\|D\\|M\\|more"), ""}};
    for (const auto& [type, message, reason] : cases) {
        SCOPED_TRACE(message);
        test::ClearLog();
        Peer peer = Join(type);
        peer->Says(message);
        const Text entry = client0 + "Client " + (type == "UI" ? "UI" : "Helper") + " connected: D\\ann";
        EXPECT_EQ(Logged(entry), reason.empty());
        EXPECT_EQ(Logged(closing + reason), !reason.empty());
        EXPECT_EQ(peer->IsClosed(), !reason.empty());
        Leave(peer);
    }
}

TEST_F(ClientConnTest, WhatASwitchboardHearsAtItsLogin) {
    for (const Text user : {"", "d\\ann", "D\\ann"})
        for (const bool linkUp : {false, true}) {
            Peer other = user.empty() ? Join() : LogIn("HELPER", user), peer = Join("UI");
            service.linkUp = linkUp;
            service.reports = 0;
            EXPECT_EQ(peer->Says(LoginOf("D\\ann")), Text(user == "D\\ann" ? "" : "|START_HELPER|\n") +
                                                         (linkUp ? "|SERVER_AVAILABLE|1\n" : "") +
                                                         "|FRONTEND_LIST_BEGIN|\n|FRONTEND_LIST_END|\n");
            EXPECT_EQ(service.Sent(), linkUp ? "|CONNECT|UI|1|0|D\\ann|Name|L\\\n" : "");
            EXPECT_EQ(service.reports, user == "D\\ann" ? 0 : 1);
            service.linkUp = false;
            Leave(other), Leave(peer);
        }
}

TEST_F(ClientConnTest, TheListHoldsTheNewestVersionsOfTheUser) {
    for (const Text row : {"1, 10, 'D\\ann', '', '', '', ''", "1, 11, 'D\\ann', 'Orders', NULL, NULL, NULL",
                           "2, 20, 'D\\ann', '', '', '', ''", "2, 21, 'D\\bob', '', '', '', ''",
                           "3, 30, 'D\\ann', 'N', 'C:\\fe', 'a.mdb', 'w'", "3, 30, 'D\\ann', '', '', '', ''"})
        Deploy(row);
    service.database.ExecuteSQL(
        "UPDATE DeployedFrontends SET FriendlyVersionNumber = '1.2', IconFile = 'i', "
        "DesktopIconPath = 'd', MenuIconPath = 'm' WHERE FrontendVersionID = 30");
    const Text list =
        "|FRONTEND_LIST_BEGIN|\n|FRONTEND_ENTRY|1|D\\ann|Orders||||11||||\n"
        "|FRONTEND_ENTRY|3|D\\ann|N|C:\\fe|a.mdb|w|30|1.2|i|d|m\n|FRONTEND_LIST_END|\n";
    const Peer helper = LogIn("HELPER"), other = LogIn("HELPER", "D\\zoe"), peer = Join("UI");
    EXPECT_EQ(peer->Says(LoginOf("D\\ann")), list);
    for (const int frontend : {2, 3, 3})
        hub.VersionRemoved(frontend);
    EXPECT_EQ(peer->Heard(), "|FRONTEND_REMOVE|3\n");
    hub.VersionDeployed(11);
    EXPECT_EQ(peer->Heard(), list);
    EXPECT_EQ(helper->Heard() + other->Heard(), "|NEW_VERSION|1|Orders\n");
    hub.VersionRemoved(3);
    EXPECT_EQ(peer->Heard(), "|FRONTEND_REMOVE|3\n");
}

TEST_F(ClientConnTest, StartWithoutServer) {
    const Peer helper = LogIn("HELPER"), peer = LogIn("UI");
    const Text office = "Program Files/Microsoft Office/Office";
    const Text missing = "The frontend has not yet been distributed to this workstation (code ";
    const struct {
        Text row, sql, file, problem, logged;
    } steps[] = {
        // each one adds to those before it
        {"7, 1, 'D\\bob', '', '', '', ''", "", "", "The frontend #7 is not presently available.",
         "Cannot locate frontend record for user D\\ann"},
        {"7, 1, 'D\\ann', 'N', 'C:\\fe', 'a.mdb', 'w'", "", "", missing + "1).",
         "\"C:\\fe\\a.mdb\" does not exist"},
        {"", "", "fe/a.mdb", missing + "2).", "No deployed files for the frontend"},
        {"",
         "INSERT INTO DeployedFrontendFiles (DeployedFrontendID, Filename) VALUES (2, 'a.mdb'), (2, 'b\\c')",
         "", missing + "3).", "\"C:\\fe\\b\\c\" does not exist"},
        {"", "", "fe/b/c", "Microsoft Access is not installed.", ""},
        {"", "UPDATE DeployedFrontends SET AllowedAccessVersions = '9,10'", office + "11/MSACCESS.EXE",
         "The required version of Microsoft Access is not installed.", ""},
        {"", "", office + "9/MSACCESS.EXE", "", ""},
        {"7, 3, 'D\\ann', 'N', 'C:\\gone', NULL, NULL", "", "", missing + "1).",
         "\"C:\\gone\\\" does not exist"}};
    for (const auto& [row, sql, file, problem, logged] : steps) {
        SCOPED_TRACE(problem + logged);
        if (!row.empty()) Deploy(row);
        if (!sql.empty()) service.database.ExecuteSQL(sql);
        if (!file.empty()) test::WriteHostFile(test::DriveC() + "/" + file, "");
        const Text box =
            "|MSGBOX|The application is currently unavailable.\r\n\r\n" + problem + "|Microsoft Access|16\n";
        EXPECT_EQ(peer->Says("|START_FRONTEND|7"), (problem.empty() ? "" : box) + "|START_FRONTEND_DONE|\n");
        EXPECT_TRUE(logged.empty() || Logged(logged));
        EXPECT_EQ(helper->Heard(), problem.empty()
                                       ? "|START_FRONTEND|7|1|N|C:\\Program Files\\Microsoft Office\\"
                                         "Office9\\MSACCESS.EXE|C:\\fe\\a.mdb|w||\n"
                                       : "");
    }
    EXPECT_TRUE(Logged("Asking helper #0 to start frontend #7"));
}

TEST_F(ClientConnTest, StartRequests) {
    Peer helper = LogIn("HELPER");
    const Peer peer = LogIn("UI");
    service.linkUp = true;
    EXPECT_EQ(peer->Says("c|START_FRONTEND|7|A title|more"), "");
    EXPECT_EQ(peer->Says("c|start_frontend|8"), "");
    EXPECT_EQ(service.Sent(), "|START_FRONTEND|0|7|A title|1\n|START_FRONTEND|0|8|Microsoft Access|1\n");
    Leave(helper);
    EXPECT_EQ(peer->Says("|START_FRONTEND|7||"),
              "|START_HELPER|\n|MSGBOX|The application is temporarily unavailable.\r\n\r\nPlease try again "
              "in a few "
              "moments.||16\n|START_FRONTEND_DONE|\n");
    for (const Text parameters : {"", "|abc", "|0", "|-1"}) {
        const Peer wrong = LogIn("UI");
        EXPECT_EQ(wrong->Says("|START_FRONTEND" + parameters), "");
        EXPECT_TRUE(wrong->IsClosed() && Logged(closing + "Invalid START_FRONTEND")) << parameters;
    }
}

TEST_F(ClientConnTest, TheNewestHelperOfAUserStays) {
    const Peer old = LogIn("HELPER"), other = LogIn("HELPER", "D\\Ann"), board = LogIn("UI"),
               next = Join("HELPER");
    service.linkUp = true;
    EXPECT_EQ(next->Says(LoginOf("D\\ann", "|L2\\||M2\\")), "");
    EXPECT_EQ(old->Heard(), "|TERMINATE|Duplicate helper username\n");
    EXPECT_TRUE(old->IsClosed() && !other->IsClosed() && !board->IsClosed() && !next->IsClosed());
    EXPECT_TRUE(Logged(closing + "Old helper with duplicate username (D\\ann)"));
    EXPECT_EQ(service.Sent(), "|DISCONNECT|HELPER|0\n|CONNECT|HELPER|3|0|D\\ann|Name|L2\\\n");
    EXPECT_EQ(service.reports, 1);
    auto database = test::OtherConnection(service.database.DatabasePath());
    auto row = database.Prepare(
        "SELECT Count(*), LocalSettingsAppDataPath, DesktopPath IS NULL, StartMenuPath FROM UserPaths");
    ASSERT_TRUE(row.Step());
    EXPECT_TRUE(row.Column(0) == Value(1) && row.Column(1) == Value("L2\\") && row.Column(2) == Value(1) &&
                row.Column(3) == Value("M2\\"));
}

TEST_F(ClientConnTest, Reports) {
    Deploy("5, 50, 'D\\bob', '', 'C:\\O''Brien\\', 'a.mdb', ''");
    Deploy("NULL, NULL, 'D\\bob', '', 'n', '', ''");
    const Peer peer = LogIn("HELPER");
    const struct {
        Text message, forwarded;
        bool completed;
    } cases[] = {
        {"c|FRONTEND_START|1|99|0|11.0|C:\\O'Brien\\a.mdb|2", "c|*|0|1|99|0|11.0|C:\\O'Brien\\a.mdb|2",
         false},
        {"|FRONTEND_START|0|99|5||C:\\O'Brien\\a.mdb|2|more", "|*|0|5|99|5||C:\\O'Brien\\a.mdb|50", true},
        {"|FRONTEND_START|1|99|0||C:\\O'Brien\\a.mdb|", "|*|0|5|99|0||C:\\O'Brien\\a.mdb|50", true},
        {"|FRONTEND_START|7|99|0||n|0", "|*|0|0|99|0||n|0", true},
        {"|FRONTEND_START|0|99|0||C:\\y|x", "|*|0|0|99|0||C:\\y|x", false},
        {"c|FRONTEND_END|5|99|more", "c|FRONTEND_END|0|5|99|more", false}};
    for (auto [message, forwarded, completed] : cases) {
        test::ClearLog();
        EXPECT_EQ(peer->Says(message), "");
        if (const auto at = forwarded.find('*'); at != Text::npos) forwarded.replace(at, 1, "FRONTEND_START");
        EXPECT_EQ(service.Sent(), forwarded + "\n");
        EXPECT_EQ(Logged(client0 + "Helper sent us incomplete data, I worked out what it should be."),
                  completed);
    }
    peer->Says("|FRONTEND_START|0|99|0|11.0|x");
    EXPECT_TRUE(peer->IsClosed() && Logged(closing + "Invalid login"));
}

}  // namespace
}  // namespace rvl
