#include <sstream>
#include <thread>

#include "tests/deploy/deployment_engine.h"
#include "tests/support/child_process.h"
#include "tests/support/private_mounts.h"

namespace rvl {
namespace {

using std::chrono::steady_clock;
using test::DeploymentEngine;
using test::Host;
using test::IsThere;
using test::kAnn;
using test::Rows;

std::string Begun() {
    return Host("begun");
}

// Not tests: the processes that are killed.

TEST(KilledDeploymentChild, DISABLED_Deploys) {
    DeploymentEngine engine;
    test::WriteHostFile(Begun(), "");
    engine.deployment.FrontendVersionDeploy(std::stoi(test::ChildProcess::Argument()), kAnn, true);
}

TEST(KilledDeploymentChild, DISABLED_Removes) {
    DeploymentEngine engine;
    test::WriteHostFile(Begun(), "");
    engine.removal.RemoveFrontendVersion(12, kAnn, true);
}

/// Actions of processes that are killed. This process has the database open only to look what they left.
class KilledDeploymentTest : public test::DeploymentTest {
 protected:
    KilledDeploymentTest() {
        if (m_mounts.MountDisk(test::DriveC(), "64m")) InstallDatabase();
        AddUser(kAnn, "ann");
        for (const std::int32_t id : {12, 13}) {
            FrontendVersion version = Version(id);
            version.FileCount = 12;
            if (id == 13) version.DesktopIconPath = version.MenuIconPath = "";  // told about half-made
            Register(version,
                     {"a.mdb", "b.mdb", "c.mdb", "d.mdb", "A\\e.mdb", "A\\f.mdb", "A\\g.mdb", "A\\h.mdb",
                      "A\\B\\i.mdb", "A\\B\\j.mdb", "A\\B\\k.mdb", "A\\B\\l.mdb"},
                     3000 * id);
        }
        engine.Close();
    }
    ~KilledDeploymentTest() override { m_mounts.Unmount(test::DriveC()); }

    /// Checks that what a fresh service reports of ann is on the disk, every recorded file of it whole.
    static Text TruthfulReport() {
        Text report = DeploymentEngine().Report();
        std::istringstream deployed(
            Rows("SELECT FrontendVersionID, FrontendLocation FROM DeployedFrontends WHERE Username NOTNULL"));
        std::istringstream files(
            Rows("SELECT Filename FROM DeployedFrontendFiles WHERE DeployedFrontendID NOT IN"
                 " (SELECT DeployedFrontendID FROM DeployedFrontends WHERE Username IS NULL)"));
        std::string id, folder;
        std::getline(std::getline(deployed, id, '|'), folder);
        int present = 0;
        for (std::string name; std::getline(files, name); ++present)
            EXPECT_TRUE(test::ReadHostFile(Host(folder + name)) ==
                        test::ReadHostFile(Host("staging/" + id + "/" + name)))
                << name;
        if (!IsThere(folder + "a.mdb")) present = 0;
        Text expected = "CURRENT_FRONTENDS_BEGIN|CURRENT_FRONTEND:3:12::12:12|CURRENT_FRONTEND:3:13::12:12|";
        if (!folder.empty())
            expected += "CURRENT_FRONTEND:3:" + id + ":DOM\\ann:12:" + std::to_string(present) + "|";
        EXPECT_EQ(report, expected + "CURRENT_FRONTENDS_END|");
        const bool shortcuts = IsThere("ann/Desktop/Orders.lnk") && IsThere("ann/Menu/Business/Orders.lnk");
        EXPECT_TRUE(id != "12" || shortcuts);
        return report;
    }

    /// Kills the action, which this process and its child carry out alike, all over its run time, and once
    /// more carries it out unharmed.
    template <class Before, class Action, class After>
    void KillEverywhere(const char* child, Before before, Action action, After after) {
        const int points = test::kAffordableProcesses, pointsOfARun = points * 15 / 16;
        int killed = 0;
        auto run = steady_clock::duration::max();
        for (int point = -3; point < points && !HasFailure(); ++point) {
            SCOPED_TRACE("point " + std::to_string(point));
            const std::string argument = before();
            const auto taken = RunAndKill(child, argument, point < 0 ? kNever : run * point / pointsOfARun);
            if (taken)
                run = std::min(run, *taken);
            else
                ++killed;
            TruthfulReport();
            DeploymentEngine fresh;
            action(fresh);
            EXPECT_EQ(fresh.sent, "");
            after();
        }
        EXPECT_GT(killed, points / 3);
    }

 private:
    static constexpr steady_clock::duration kNever = std::chrono::seconds(30);

    /// How long the action took; none when it was killed before its end.
    static std::optional<steady_clock::duration> RunAndKill(const char* test, const std::string& argument,
                                                            steady_clock::duration after) {
        std::filesystem::remove(Begun());
        test::ChildProcess child(std::string("KilledDeploymentChild.DISABLED_") + test, argument);
        while (!std::filesystem::exists(Begun()) && !child.HasEnded())
            std::this_thread::yield();
        const auto start = steady_clock::now();
        while (!child.HasEnded() && steady_clock::now() < start + after)
            std::this_thread::sleep_for(std::chrono::microseconds(20));
        child.Kill();
        if (child.Wait() == test::ChildProcess::kKilled) return std::nullopt;
        return steady_clock::now() - start;
    }

    test::PrivateMounts m_mounts;  // a disk without delays
};

TEST_F(KilledDeploymentTest, DeployingAgainCompletesIt) {
    std::int32_t id = 12;
    KillEverywhere(
        "Deploys",
        [&] {  // ann has the other version
            id = 25 - id;
            return std::to_string(id);
        },
        [&](DeploymentEngine& fresh) { fresh.deployment.FrontendVersionDeploy(id, kAnn, true); },
        [&] {
            const Text complete = "CURRENT_FRONTEND:3:" + std::to_string(id) + ":DOM\\ann:12:12|";
            EXPECT_NE(TruthfulReport().find(complete), Text::npos);
        });
}

TEST_F(KilledDeploymentTest, RemovingAgainCompletesIt) {
    KillEverywhere(
        "Removes",
        [] {
            DeploymentEngine().deployment.FrontendVersionDeploy(12, kAnn, true);
            return "";
        },
        [](DeploymentEngine& fresh) { fresh.removal.RemoveFrontendVersion(12, kAnn, true); },
        [] {
            EXPECT_EQ(TruthfulReport().find("ann"), Text::npos);
            for (const char* folder : {"fe", "ann"})
                for (const auto& entry : std::filesystem::recursive_directory_iterator(Host(folder)))
                    EXPECT_TRUE(entry.is_directory()) << entry.path();
        });
}

}  // namespace
}  // namespace rvl
