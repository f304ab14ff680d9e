#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include "runtime/folders.h"
#include "runtime/system_information.h"
#include "tests/deploy/deployment_engine.h"
#include "tests/support/posix/host_access.h"

namespace rvl {
namespace {

using test::Host;
using DeploymentByUsers = test::DeploymentTest;

TEST_F(DeploymentByUsers, GrantTheUserTheRights) {
    if (geteuid() != 0) GTEST_SKIP() << "accounts of others need root";
    AddUser("W\\Games", "games");
    Register(Version(12));
    Deploy(12, "W\\Games");
    for (const char* path : {"fe/3/12", "fe/3/12/a.mdb", "fe/3/12/Data", "fe/3/12/Data/c.mdb",
                             "games/Desktop/Orders.lnk", "games/Menu/Business/Orders.lnk"})
        EXPECT_NE(test::AccessOf(Host(path)).find(" user:games:rwx group::--- "), std::string::npos) << path;
}

/// Shortcuts lead to it: a tree below somebody's closed home cannot be deployed from as nobody.
bool NobodyReachesThisProgram() {
    if (geteuid() != 0) return false;
    setfsuid(65534);
    const bool reached = FileExists(Self());
    setfsuid(geteuid());
    return reached;
}

TEST_F(DeploymentByUsers, ASourceThatMayNotBeRead) {
    if (!NobodyReachesThisProgram())
        GTEST_SKIP() << "nobody does not reach this program, or this is not root";
    Register(Version(12));
    chmod(Host("staging/12/b.mdb").c_str(), 0600);
    chmod(test::Root().c_str(), 0711);
    std::filesystem::create_directories(Host("fe/3/12/Data"));
    for (const char* folder : {"fe/3/12", "fe/3/12/Data"})
        chmod(Host(folder).c_str(), 0777);
    setfsuid(65534);
    Deploy(12);
    setfsuid(geteuid());
    ExpectUncopied(5);
}

}  // namespace
}  // namespace rvl
