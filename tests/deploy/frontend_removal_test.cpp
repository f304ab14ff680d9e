#include "deploy/frontend_removal.h"

#include "tests/deploy/deployment_engine.h"

namespace rvl {
namespace {

using test::Host;
using test::kAnn;
using test::kBob;
using test::Rows;

class FrontendRemovalTest : public test::DeploymentTest {
 protected:
    FrontendRemovalTest() {
        AddUser(kAnn, "ann");
        AddUser(kBob, "bob");
        Register(Version(12));
        Deploy(12);
        Deploy(12, kBob);
        engine.told.clear();
    }

    void Remove(const Text& username) { engine.removal.RemoveFrontendVersion(12, username, false); }

    static void Expect(bool there, const std::vector<std::string>& paths) {
        for (const std::string& path : paths)
            EXPECT_EQ(test::IsThere(path), there) << path;
    }
};

TEST_F(FrontendRemovalTest, OfOneUser) {
    test::WriteHostFile(Host("ann/Menu/Business/Own.txt"), "");
    std::filesystem::create_directories(Host("fe/3/12/Data/left/empty"));
    Remove(kAnn);
    Expect(false, {"fe/3/12/a.mdb", "fe/3/12/b.mdb", "fe/3/12/Data", "fe/3/12/Res", "ann/Desktop/Orders.lnk",
                   "ann/Menu/Business/Orders.lnk"});
    Expect(true, {"ann/Desktop", "ann/Menu/Business/Own.txt", "fe/3/12/_1/Data/c.mdb", "fe/3/12/_1/Res/i.ico",
                  "bob/Desktop/Orders.lnk", "bob/Menu/Business/Orders.lnk", "staging/12/Data/c.mdb"});
    EXPECT_EQ(Rows("SELECT DISTINCT DeployedFrontendID FROM DeployedFrontendFiles UNION ALL"
                   " SELECT DeployedFrontendID FROM DeployedFrontends"),
              "1\n3\n1\n3\n");
    EXPECT_EQ(engine.told, "removed 3|");
    Remove(kBob);
    Expect(false, {"fe/3/12/_1/a.mdb", "fe/3/12/_1/Data", "bob/Menu/Business"});
    Expect(true, {"fe/3/12/_1", "bob/Menu"});
    for (const char* entry :
         {"Removing frontend version #12 for user DOM\\ann", "Orders is installed to C:\\fe\\3\\12\\",
          "Removing C:\\fe\\3\\12\\Data\\c.mdb", "Removing C:\\ann\\Desktop\\Orders.lnk"})
        EXPECT_TRUE(test::Logged(entry)) << entry;
}

TEST_F(FrontendRemovalTest, OfTheTemplate) {
    Remove("");
    Expect(false, {"staging/12/a.mdb", "staging/12/Data", "staging/12/Res"});
    Expect(true, {"staging/12", "fe/3/12/Data/c.mdb", "ann/Desktop/Orders.lnk"});
    EXPECT_EQ(Rows("SELECT DeployedFrontendID FROM DeployedFrontends"), "2\n3\n");
    EXPECT_TRUE(test::Logged("Removing frontend version template #12"));
}

TEST_F(FrontendRemovalTest, WhatCannotBeDeletedStaysUnrecorded) {
    std::filesystem::remove(Host("fe/3/12/b.mdb"));
    test::WriteHostFile(Host("fe/3/12/b.mdb/own"), "");
    Rows("DELETE FROM UserPaths");  // nobody knows where the user's own menu begins
    Remove(kAnn);
    Expect(true, {"fe/3/12/b.mdb/own", "ann/Menu/Business"});
    Expect(false, {"fe/3/12/a.mdb", "ann/Menu/Business/Orders.lnk"});
    EXPECT_EQ(Rows("SELECT Count(*) FROM DeployedFrontendFiles WHERE DeployedFrontendID = 2"), "0\n");
    EXPECT_TRUE(errors.lines.empty());
}

TEST_F(FrontendRemovalTest, AllVersionsOfAFrontend) {
    Rows(
        "INSERT INTO DeployedFrontends (FrontendID, FrontendVersionID, Username) VALUES (3, 11, 'dom\\Ann'),"
        " (4, 14, 'DOM\\ann'), (3, 13, NULL)");
    const char* rest = "SELECT FrontendVersionID, Username FROM DeployedFrontends ORDER BY 1";
    engine.removal.RemoveAllFrontendVersions(3, kAnn, true);
    EXPECT_EQ(Rows(rest), "12|-\n12|DOM\\bob\n13|-\n14|DOM\\ann\n");
    engine.removal.RemoveAllFrontendVersions(3, "", true);
    EXPECT_EQ(Rows(rest), "12|DOM\\bob\n14|DOM\\ann\n");
    for (const bool quiet : {true, false}) {
        engine.removal.RemoveFrontendVersion(99, kAnn, quiet);
        EXPECT_EQ(test::Logged("Cannot find frontend version #99 for user DOM\\ann to remove"), !quiet);
    }
}

}  // namespace
}  // namespace rvl
