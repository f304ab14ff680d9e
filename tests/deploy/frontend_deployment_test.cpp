#include "deploy/frontend_deployment.h"

#include "runtime/folders.h"
#include "runtime/system_information.h"
#include "tests/deploy/deployment_engine.h"
#include "tests/support/host_shell.h"
#include "tests/support/private_mounts.h"

namespace rvl {
namespace {

using test::Host;
using test::IsThere;
using test::kAnn;
using test::kBob;
using test::ReadHostFile;
using test::Rows;

class FrontendDeploymentTest : public test::DeploymentTest {
 protected:
    static std::string Deployed(const std::string& columns) {
        return Rows("SELECT " + columns + " FROM DeployedFrontends WHERE Username NOTNULL");
    }
};

TEST_F(FrontendDeploymentTest, Destinations) {
    const std::string programs = "C:\\Program Files\\Ravelin\\Client\\Frontends\\3\\12\\";
    const std::tuple<std::int32_t, Text, std::string, std::string> rows[] = {
        {1, "", "", "C:\\ann\\Local\\Ravelin\\Client\\Frontends\\3\\12\\"},
        {2, "", "", programs},
        {3, "C:\\x\\y", "", "C:\\x\\y\\3\\12\\"},
        {3, "C:\\x\\", "", "C:\\x\\3\\12\\"},
        {3, "", "", "\\3\\12\\"},
        {0, "C:\\x", "", "\\3\\12\\"},
        {1, "", "UPDATE UserPaths SET LocalSettingsAppDataPath = '', DesktopPath = NULL", programs},
        {1, "", "UPDATE UserPaths SET LocalSettingsAppDataPath = NULL", programs},
        {1, "", "DELETE FROM UserPaths", programs}};
    AddUser("dom\\Ann", "ann");  // accounts have no case
    for (const auto& [location, custom, before, folder] : rows) {
        if (!before.empty()) Rows(before);
        FrontendVersion version = Version(12);
        version.DestinationLocation = location;
        version.CustomDestinationLocation = custom;
        Register(version);
        Deploy(12);
        EXPECT_EQ(Deployed("FrontendLocation"), folder + "\n");
        EXPECT_EQ(ReadHostFile(Host(folder + "Data\\c.mdb")), "Data\\c.mdb");
        EXPECT_EQ(Deployed("DesktopIconPath"), before.empty() ? "C:\\ann\\Desktop\\Orders.lnk\n" : "-\n");
        EXPECT_EQ(Deployed("MenuIconPath"),
                  before.starts_with("DELETE") ? "-\n" : "C:\\ann\\Menu\\Business\\Orders.lnk\n");
    }
    EXPECT_TRUE(engine.sent.empty() && errors.lines.empty());
}

TEST_F(FrontendDeploymentTest, StepsAsideForFilesThatAreThere) {
    Register(Version(12));
    std::filesystem::create_directories(Host("fe/3/12/empty/empty"));
    for (const auto& [occupied, folder] : {std::pair("none", ""),
                                           {"fe/3/12/_1/deep/x", "_2\\"},
                                           {"fe/3/12/x", "_2\\"},
                                           {"fe/3/12/_2/x", "_3\\"}}) {
        test::WriteHostFile(Host(occupied), "");
        Deploy(12);
        EXPECT_EQ(Deployed("FrontendLocation"), Text("C:\\fe\\3\\12\\") + folder + "\n");
    }
}

/// The service must go on, whatever the server takes for a folder.
TEST_F(FrontendDeploymentTest, DestinationsThatCannotBe) {
    test::WriteHostFile(Host("file"), "x");
    for (const Text& folder : {Text("Q:\\"), Text("C:\\file"), "C:\\" + Text(300, 'n')}) {
        FrontendVersion version = Version(12);
        version.CustomDestinationLocation = folder;
        Register(version);
        Deploy(12);
        EXPECT_TRUE(std::exchange(engine.sent, {}).starts_with("GENERAL_ERROR:")) << folder;
    }
}

TEST_F(FrontendDeploymentTest, DeploysAndReplaces) {
    AddUser(kAnn, "ann");
    Register(Version(12));
    Register(Version(13));
    Deploy(12);
    EXPECT_EQ(Rows("SELECT * FROM DeployedFrontends WHERE DeployedFrontendID = 3"),
              "3|3|12|DOM\\ann|Orders|C:\\fe\\3\\12\\|a.mdb|-|-||Res\\i.ico|C:\\ann\\Desktop\\Orders.lnk|"
              "C:\\ann\\Menu\\Business\\Orders.lnk|3|C:\\fe|3\n");
    const std::string files =
        "SELECT Filename, FileSize, MD5Hash FROM DeployedFrontendFiles"
        " WHERE DeployedFrontendID = ";
    EXPECT_EQ(Rows(files + "3"), Rows(files + "1"));
    EXPECT_EQ(ReadHostFile(Host("fe/3/12/Res/i.ico")), "icon");
    test::WriteHostFile(Host("staging/12/b.mdb"), "changed");
    Deploy(12);  // the same again
    EXPECT_EQ(Deployed("FrontendLocation") + ReadHostFile(Host("fe/3/12/b.mdb")), "C:\\fe\\3\\12\\\nchanged");
    Deploy(12, kBob);
    Deploy(13);
    EXPECT_EQ(Deployed("FrontendVersionID, FrontendLocation"),
              "12|C:\\fe\\3\\12\\_1\\\n13|C:\\fe\\3\\13\\\n");
    for (const char* gone : {"fe/3/12/a.mdb", "fe/3/12/b.mdb", "fe/3/12/Data", "fe/3/12/Res"})
        EXPECT_FALSE(IsThere(gone)) << gone;
    for (const char* there : {"fe/3/12/_1/a.mdb", "fe/3/13/a.mdb", "ann/Desktop/Orders.lnk"})
        EXPECT_TRUE(IsThere(there)) << there;
    EXPECT_EQ(engine.told, "deployed 12|removed 3|deployed 12|deployed 12|removed 3|deployed 13|");
    EXPECT_TRUE(engine.sent.empty() && errors.lines.empty());
}

TEST_F(FrontendDeploymentTest, Shortcuts) {
    if (test::OutputOf("command -v lnkinfo").empty()) GTEST_SKIP() << "no lnkinfo";
    const Text own = Self() + "\n4\n", file = "C:\\fe\\3\\12\\Res\\i.ico\n0\n";
    const std::tuple<Text, Text, Text, Text> rows[] = {
        {"Orders", "none.ico", "\"Orders\"", own},
        {"Say \"Hi\" O'B", "Res\\i.ico", "\"Say ''Hi'' O'B\"", file},
        {"\"", "empty.ico", "\"''\"", own}};
    const auto shown = [](const Text& word, const Text& icon) {
        return test::OutputOf("sort <<'X'\n-start_frontend 3 " + word + "\n" + icon + "X\n");
    };
    AddUser(kAnn, "ann");
    test::WriteHostFile(Host("staging/12/empty.ico"), "");
    for (const auto& [name, icon, word, iconShown] : rows) {
        FrontendVersion version = Version(12);
        version.FrontendName = name;
        Register(version);
        version.IconFile = icon;
        engine.registration.AddFrontendVersion(version);
        Deploy(12);
        for (const char* folder : {"ann/Desktop", "ann/Menu/Business"})
            EXPECT_EQ(
                test::OutputOf("lnkinfo Orders.lnk | sed -nE 's/^\t(Command line arguments|Icon location|"
                               "Icon index)\t*: //p' | sort",
                               Host(folder)),
                shown(word, iconShown));
    }
}

TEST_F(FrontendDeploymentTest, MakeAvailableAndRefusals) {
    AddUser(kAnn, "ann");
    Register(Version(12));
    engine.deployment.FrontendVersionDeploy(12, kAnn, false);
    EXPECT_FALSE(IsThere("fe/3/12/a.mdb"));
    EXPECT_TRUE(IsThere("fe/3/12/Res/i.ico") && IsThere("ann/Desktop/Orders.lnk"));
    EXPECT_TRUE(test::Logged("Not copying files for this deployment"));
    EXPECT_NE(engine.Report().find("CURRENT_FRONTEND:3:12:DOM\\ann:3:0|"), Text::npos);
    Deploy(99);
    EXPECT_EQ(std::exchange(engine.sent, {}),
              "GENERAL_ERROR:87:Unable to locate template frontend version #99|");
    Deploy(12, "");
    EXPECT_TRUE(engine.sent.starts_with("GENERAL_ERROR:87:"));
    EXPECT_EQ(engine.told + Rows("SELECT DeployedFrontendID FROM DeployedFrontends"), "deployed 12|1\n2\n");
}

TEST_F(FrontendDeploymentTest, AFileThatCannotBeCopied) {
    bool isSpoilt = true;
    test::PrivateMounts mounts;
    const std::string source = Host("staging/12/b.mdb");
    const auto onSmallDisk = [&] {
        std::filesystem::create_directories(Host("fe"));
        test::WriteHostFile(source, std::string(200000, 'b'));
        return mounts.MountDisk(Host("fe"), "64k");
    };
    const std::pair<std::function<bool()>, int> rows[] = {
        {[&] { return std::filesystem::remove(source); }, 2},
        {[] { return std::filesystem::create_directories(Host("fe/3/12/b.mdb")); }, 5},
        {onSmallDisk, 112}};
    for (const auto& [spoil, error] : rows) {
        Register(Version(12));
        if (!spoil()) {
            isSpoilt = false;
            continue;
        }
        Deploy(12);
        ExpectUncopied(error);
        engine.removal.RemoveFrontendVersion(12, kAnn, false);
        mounts.Unmount(Host("fe"));
        std::filesystem::remove_all(Host("fe"));
    }
    EXPECT_TRUE(errors.lines.empty());
    if (!isSpoilt) GTEST_SKIP() << "a full disk: there is no small one to be had here";
}

}  // namespace
}  // namespace rvl
