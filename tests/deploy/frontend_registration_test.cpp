#include "deploy/frontend_registration.h"

#include "deploy/version_file_name.h"
#include "tests/deploy/deployment_engine.h"

namespace rvl {
namespace {

using test::Rows;
using FrontendRegistrationTest = test::DeploymentTest;

TEST_F(FrontendRegistrationTest, EveryParameterHasItsField) {
    struct : ServerReplies {
        void SendToServer(const Text&, const Text& answer, const std::vector<Text>&) override {
            FAIL() << answer;
        }
    } replies;
    FrontendCommands commands(engine.registration, engine.deployment, engine.removal);
    for (const std::vector<Text>& params :
         {std::vector<Text>{"3", "12", "Or'ders", "C:\\s", "a.mdb", "8,9", "C:\\w.mdw", "1.2", "i.ico",
                            "Desk", "Menu", "CUSTOM", "C:\\fe", "5"},
          {"x", "", "", "", "", "", "", "", "", "", "", "user_profile", "", ""}})
        commands.Add(ServerRequest({"c", "FRONTEND_ADD", JoinParameters(params)}, replies));
    EXPECT_EQ(Rows("SELECT FrontendID, FrontendVersionID, Username, FrontendName, FrontendLocation,"
                   " FrontendFilename, AllowedAccessVersions, MDWPath, FriendlyVersionNumber, IconFile,"
                   " DesktopIconPath, MenuIconPath, DestinationLocation, CustomDestinationLocation, FileCount"
                   " FROM DeployedFrontends"),
              "3|12|-|Or'ders|C:\\s|a.mdb|8,9|C:\\w.mdw|1.2|i.ico|Desk|Menu|3|C:\\fe|5\n"
              "0|0|-||||-|-||-|-|-|1|-|0\n");
}

TEST_F(FrontendRegistrationTest, AVersionAnnouncedAgainBeginsAnew) {
    for (const std::int32_t id : {12, 13})
        Register(Version(id));
    Deploy(12);
    engine.registration.AddFrontendVersion(Version(12));
    EXPECT_EQ(Rows("SELECT DeployedFrontendID, FrontendVersionID, Username FROM DeployedFrontends"),
              "2|13|-\n3|12|DOM\\ann\n4|12|-\n");
    EXPECT_EQ(Rows("SELECT DeployedFrontendID, Count(*) FROM DeployedFrontendFiles GROUP BY 1"),
              "2|3\n3|3\n");
}

TEST_F(FrontendRegistrationTest, Confirmations) {
    const std::string x = "|1|9dd4e461268c8034f5c8564e155c67a6", y = "|4|81dc9bdb52d04dc20036dbd8313ed055";
    const Text outside = "Name leads out of its folder: \"..\\a.mdb\"";
    const std::tuple<std::int32_t, Text, std::string, Text, std::string> rows[] = {
        {12, "a.mdb", "x", "", "a.mdb" + x},
        {12, "A.MDB", "1234", "", "A.MDB" + y},  // replaced
        {12, "O'Brien.mdb", "x", "", "A.MDB" + y + "\nO'Brien.mdb" + x},
        {12, "O'Brien.mdb", "1234", "", "A.MDB" + y + "\nO'Brien.mdb" + y},
        {12, "Data\\l", "x", "", "A.MDB" + y + "\nO'Brien.mdb" + y + "\nData\\l" + x},
        {12, "O'Brien.mdb", "", "Unable to locate file \"C:\\staging\\12\\O'Brien.mdb\"",
         "A.MDB" + y + "\nData\\l" + x},
        {12, "Data", "", "Unable to locate file \"C:\\staging\\12\\Data\"", "A.MDB" + y + "\nData\\l" + x},
        {99, "A.mdb", "x", "Unable to locate frontend version #99", "A.MDB" + y + "\nData\\l" + x},
        {12, "..\\a.mdb", "x", outside, "A.MDB" + y + "\nData\\l" + x}};
    engine.registration.AddFrontendVersion(Version(12));
    for (const auto& [id, name, content, problem, files] : rows) {
        const std::string path = test::Host("staging\\12\\" + name);
        std::error_code isFolder;
        content.empty() ? (void)std::filesystem::remove(path, isFolder) : test::WriteHostFile(path, content);
        engine.registration.AddFrontendVersionFile(id, name);
        EXPECT_EQ(std::exchange(engine.sent, {}), problem.empty() ? "" : "GENERAL_ERROR:87:" + problem + "|");
        EXPECT_EQ(Rows("SELECT Filename, FileSize, MD5Hash FROM DeployedFrontendFiles ORDER BY rowid"),
                  files + "\n");
    }
    EXPECT_TRUE(test::Logged(outside));
}

TEST(VersionFileName, StaysInFolder) {
    for (const char* name : {"", "a.mdb", "Data\\a..mdb", "..a", "...a\\b", "\\a", ".\\a", "a/b\\c"})
        EXPECT_TRUE(StaysInFolder(name)) << name;
    for (const char* name : {"..", "..\\a", "../a", "Data\\..\\a", "Data/../a", "Data\\..", ".. \\a",
                             "Data\\.. .\\a", "C:\\a", "c:a", "\\..\\a", "Data\\\\..\\a"})
        EXPECT_FALSE(StaysInFolder(name)) << name;
}

}  // namespace
}  // namespace rvl
