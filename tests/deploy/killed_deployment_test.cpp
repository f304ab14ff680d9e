#include <csignal>
#include <sstream>

#include "tests/deploy/deployment_engine.h"
#include "tests/support/private_mounts.h"

namespace rvl {
namespace {

using std::chrono::steady_clock;
using test::DeploymentEngine;
using test::Host;
using test::IsThere;
using test::kAnn;
using test::Rows;

/// Actions of processes that are killed. This process has the database open only to look what they left.
class KilledDeploymentTest : public test::DeploymentTest {
 protected:
    KilledDeploymentTest() {
        if (m_mounts.Granted() && m_mounts.MountDisk(test::DriveC(), "64m")) InstallDatabase();
        AddUser(kAnn, "ann");
        RunAndKill(kNever, [this](DeploymentEngine&) {
            for (const std::int32_t id : {12, 13}) {
                FrontendVersion version = Version(id);
                version.FileCount = 12;
                if (id == 13) version.DesktopIconPath = version.MenuIconPath = "";  // told about half-made
                Register(version,
                         {"a.mdb", "b.mdb", "c.mdb", "d.mdb", "A\\e.mdb", "A\\f.mdb", "A\\g.mdb", "A\\h.mdb",
                          "A\\B\\i.mdb", "A\\B\\j.mdb", "A\\B\\k.mdb", "A\\B\\l.mdb"},
                         3000 * id);
            }
        });
    }
    ~KilledDeploymentTest() override { m_mounts.Unmount(test::DriveC()); }

    /// Checks that what a fresh service reports of ann is on the disk, every recorded file of it whole.
    static Text TruthfulReport() {
        Text report = DeploymentEngine().Report();
        std::istringstream rows(
            Rows("SELECT FrontendVersionID, FrontendLocation FROM DeployedFrontends"
                 " WHERE Username NOTNULL; SELECT Filename FROM DeployedFrontendFiles"
                 " WHERE DeployedFrontendID NOT IN (SELECT DeployedFrontendID"
                 " FROM DeployedFrontends WHERE Username IS NULL)"));
        std::string id, folder;
        std::getline(std::getline(rows, id, '|'), folder);
        const std::string source = "staging/" + id + "/";
        std::string compare;
        int present = 0;
        for (std::string name; std::getline(rows, name); ++present)
            compare.append("cmp '" + Host(folder + name))
                .append("' '" + Host(source + name))
                .append("' 2>&1;");
        EXPECT_EQ(test::OutputOf(compare), "");
        if (!IsThere(folder + "a.mdb")) present = 0;
        Text expected = "CURRENT_FRONTENDS_BEGIN|CURRENT_FRONTEND:3:12::12:12|CURRENT_FRONTEND:3:13::12:12|";
        if (!folder.empty())
            expected += "CURRENT_FRONTEND:3:" + id + ":DOM\\ann:12:" + std::to_string(present) + "|";
        EXPECT_EQ(report, expected + "CURRENT_FRONTENDS_END|");
        const bool shortcuts = IsThere("ann/Desktop/Orders.lnk") && IsThere("ann/Menu/Business/Orders.lnk");
        EXPECT_TRUE(id != "12" || shortcuts);
        return report;
    }

    /// Kills the action all over its run time, and once more carries it out unharmed.
    template <class Before, class Action, class After>
    void KillEverywhere(Before before, Action action, After after) {
        constexpr int kPoints = 66, kPointsOfARun = 62;
        int killed = 0;
        auto run = steady_clock::duration::max();
        for (int point = -3; point < kPoints && !HasFailure(); ++point) {
            SCOPED_TRACE("point " + std::to_string(point));
            before();
            const auto start = steady_clock::now();
            if (RunAndKill(point < 0 ? kNever : run * point / kPointsOfARun, action))
                ++killed;
            else
                run = std::min(run, steady_clock::now() - start);
            TruthfulReport();
            DeploymentEngine fresh;
            action(fresh);
            EXPECT_EQ(fresh.sent, "");
            after();
        }
        EXPECT_GT(killed, kPoints / 3);
    }

 private:
    static constexpr steady_clock::duration kNever = std::chrono::hours(1);

    /// True when the action was killed before its end.
    template <class Action>
    static bool RunAndKill(steady_clock::duration after, Action action) {
        const auto end = steady_clock::now() + after;
        const pid_t child = test::StartProcess([&] {
            DeploymentEngine engine;
            action(engine);
        });
        int status = 0;
        pid_t ended = 0;
        while (ended == 0 && steady_clock::now() < end) {
            usleep(20);
            ended = waitpid(child, &status, WNOHANG);
        }
        if (ended == 0) kill(child, SIGKILL);
        if (ended == 0) waitpid(child, &status, 0);
        return WIFSIGNALED(status);
    }

    const test::PrivateMounts m_mounts;  // a disk without delays
};

TEST_F(KilledDeploymentTest, DeployingAgainCompletesIt) {
    std::int32_t id = 12;
    KillEverywhere([&] { id = 25 - id; },  // ann has the other version
                   [&](DeploymentEngine& engine) { engine.deployment.FrontendVersionDeploy(id, kAnn, true); },
                   [&] {
                       const Text complete = "CURRENT_FRONTEND:3:" + std::to_string(id) + ":DOM\\ann:12:12|";
                       EXPECT_NE(TruthfulReport().find(complete), Text::npos);
                   });
}

TEST_F(KilledDeploymentTest, RemovingAgainCompletesIt) {
    KillEverywhere([] { DeploymentEngine().deployment.FrontendVersionDeploy(12, kAnn, true); },
                   [](DeploymentEngine& engine) { engine.removal.RemoveFrontendVersion(12, kAnn, true); },
                   [] {
                       EXPECT_EQ(TruthfulReport().find("ann"), Text::npos);
                       EXPECT_EQ(test::OutputOf("cd '" + Host("") + "' && find fe ann -type f"), "");
                   });
}

}  // namespace
}  // namespace rvl
