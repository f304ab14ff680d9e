#include "deploy/frontend_report.h"

#include "tests/deploy/deployment_engine.h"
#include "tests/support/private_mounts.h"

namespace rvl {
namespace {

using test::Host;
using test::IsThere;
using test::kAnn;
using test::Rows;

const Text kBegin = "CURRENT_FRONTENDS_BEGIN|", kEnd = "CURRENT_FRONTENDS_END|";
const Text kTemplate = "CURRENT_FRONTEND:3:12::3:3|";

class FrontendReportTest : public test::DeploymentTest {
 protected:
    FrontendReportTest() {
        EXPECT_EQ(engine.Report(), kBegin + kEnd);
        AddUser(kAnn, "ann");
        Register(Version(12));
    }
};

TEST_F(FrontendReportTest, Templates) {
    test::WriteHostFile(Host("staging/12/b.mdb"), "half");
    EXPECT_EQ(engine.Report(), kBegin + "CURRENT_FRONTEND:3:12::3:2|" + kEnd);
    std::filesystem::remove(Host("staging/12/a.mdb"));
    EXPECT_EQ(engine.Report(), kBegin + "CURRENT_FRONTEND:3:12::3:1|" + kEnd);
    EXPECT_EQ(Rows("SELECT Filename FROM DeployedFrontendFiles"), "b.mdb\nData\\c.mdb\n");
}

TEST_F(FrontendReportTest, Deployments) {
    const std::tuple<std::string, Text, Text> rows[] = {
        // what goes, how many are left (none: forgotten)
        {"none", "3", ""},
        {"fe/3/12/b.mdb", "2", ""},
        {"fe/3/12/a.mdb", "0", "C:\\fe\\3\\12\\a.mdb"},
        {"fe/3/12", "0", "C:\\fe\\3\\12\\"},
        {"ann/Desktop/Orders.lnk", "", "C:\\ann\\Desktop\\Orders.lnk"},
        {"ann/Menu", "", "C:\\ann\\Menu\\Business\\Orders.lnk"}};
    const auto with = [](const Text& record) { return kBegin + kTemplate + record + kEnd; };
    for (const auto& [gone, present, missing] : rows) {
        Deploy(12);
        test::WriteHostFile(Host("fe/3/12/a.mdb"), "used");  // still present
        test::ClearLog();
        std::filesystem::remove_all(Host(gone));
        const bool forgotten = present.empty();
        const Text record = forgotten ? Text() : "CURRENT_FRONTEND:3:12:DOM\\ann:3:" + present + "|";
        for (int twice = 0; twice < 2; ++twice)
            EXPECT_EQ(engine.Report(), with(record)) << gone;
        EXPECT_TRUE(missing.empty() ||
                    test::Logged(missing + " is missing, forgetting about deployed version"));
        EXPECT_EQ(test::Logged("Missing critical files for version #12, username \"DOM\\ann\""), forgotten);
        EXPECT_EQ(Rows("SELECT FrontendVersionID FROM DeployedFrontends WHERE Username NOTNULL"),
                  forgotten ? "" : "12\n");
        EXPECT_EQ(IsThere("ann/Desktop/Orders.lnk"), !forgotten);
        EXPECT_EQ(IsThere("ann/Menu/Business/Orders.lnk"), !forgotten);
        EXPECT_TRUE(!forgotten || std::filesystem::is_empty(Host("fe/3/12")));
        EXPECT_TRUE(!forgotten || Rows("SELECT Max(DeployedFrontendID) FROM DeployedFrontendFiles") == "1\n");
    }
    EXPECT_TRUE(errors.lines.empty());
}

TEST_F(FrontendReportTest, AForgottenDeploymentThatIsInUseKeepsItsFiles) {
    test::PrivateMounts mounts;
    Deploy(12);
    if (!mounts.Hold(Host("fe/3/12/a.mdb"))) GTEST_SKIP() << "no private mounts";
    std::filesystem::remove(Host("ann/Desktop/Orders.lnk"));
    EXPECT_EQ(engine.Report(), kBegin + kTemplate + kEnd);
    EXPECT_TRUE(IsThere("fe/3/12/a.mdb") && IsThere("fe/3/12/Data/c.mdb"));
    EXPECT_EQ(Rows("SELECT DISTINCT DeployedFrontendID FROM DeployedFrontendFiles"), "1\n");
    Deploy(12);
    EXPECT_TRUE(IsThere("fe/3/12/_1/a.mdb"));
    mounts.Unmount(Host("fe/3/12/a.mdb"));
}

TEST_F(FrontendReportTest, ARowWhoseFilesCannotBeReadIsSkipped) {
    Deploy(12);
    Deploy(12, test::kBob);
    Rows("UPDATE DeployedFrontendFiles SET Filename = char(20013) WHERE DeployedFrontendID = 2");  // no Text
    EXPECT_EQ(engine.Report(), kBegin + kTemplate + "CURRENT_FRONTEND:3:12:DOM\\bob:3:3|" + kEnd);
    Rows("UPDATE DeployedFrontends SET FrontendName = char(20013) WHERE DeployedFrontendID = 2");
    EXPECT_EQ(engine.Report(), kBegin);  // the versions themselves cannot be read
    ASSERT_EQ(errors.lines.size(), 2u);
    EXPECT_TRUE(errors.lines[1].starts_with("frmClientService.SendCurrentFrontends: ")) << errors.lines[1];
}

}  // namespace
}  // namespace rvl
