#include "deploy/user_file_permissions.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/posix/host_access.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

/// Whoever owned the item before, and whatever rights were set on it.
TEST(UserFilePermissions, DeployedItems) {
    if (geteuid() != 0) GTEST_SKIP() << "accounts of others need root";
    setenv("RVL_USER", "Daemon", 1);  // the service's account
    const std::string folder = test::DriveC() + "/item", file = folder + "/file";
    for (const auto& [owner, mode] :
         {std::pair<uid_t, mode_t>{0, 0755}, {1, 0700}, {5, 0500}, {65534, 0777}}) {
        test::WriteHostFile(file, "x");
        for (const std::string& host : {folder, file})
            if (chown(host.c_str(), owner, 100) != 0 || chmod(host.c_str(), mode) != 0) FAIL();
        for (const char* path : {"C:\\item", "C:\\item\\file"})
            SetUserFilePerms("W\\Games", path);
        const std::string named = "user:root:rwx user:daemon:rwx user:games:rwx group::--- group:sudo:rwx ";
        const std::string access = "user::rwx " + named + "mask::rwx other::---";
        EXPECT_EQ(test::AccessOf(file), access + " root:sudo") << owner;
        EXPECT_TRUE(test::AccessOf(folder).starts_with(access + " default:user::rwx default:user:root:rwx "));
        for (const char* user : {"daemon", "games", "nobody"})
            EXPECT_EQ(test::CanRun(user, test::DriveC(), ": <item/file >>item/file && : >item/" + Text(user)),
                      Text(user) != "nobody")
                << user << " when " << owner << " owned it";
        EXPECT_TRUE(test::CanRun("daemon", folder, "echo x >>games && rm games"));
        test::EmptyDriveC();
    }
    unsetenv("RVL_USER");
}

}  // namespace
}  // namespace rvl
