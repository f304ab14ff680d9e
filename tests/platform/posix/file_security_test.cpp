#include "platform/file_security.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/posix/host_access.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

constexpr std::uint32_t kFull = 0x1F01FF, kReadAndExecute = 0x1200A9;

class FileSecurityTest : public testing::Test {
 protected:
    FileSecurityTest() { std::filesystem::create_directory(c); }
    ~FileSecurityTest() override { test::EmptyDriveC(); }

    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "accounts of others need root";
    }

    /// A file of root's, made anew.
    std::string NewFile(mode_t mode) const {
        std::filesystem::remove(c + "/file");
        test::WriteHostFile(c + "/file", "x");
        chmod((c + "/file").c_str(), mode);
        return c + "/file";
    }

    std::string NewFolder(mode_t mode) const {
        std::filesystem::create_directory(c + "/folder");
        chmod((c + "/folder").c_str(), mode);
        return c + "/folder";
    }

    const std::string c = test::DriveC();
    const Text file = "C:\\FILE", folder = "C:\\folder\\";
};

TEST_F(FileSecurityTest, Grants) {
    const std::tuple<Text, std::uint32_t, std::string> rows[] = {
        {"W\\daemon", kFull, "user::rw- user:daemon:rwx group::r-- mask::rwx other::---"},
        {"DAEMON", kReadAndExecute, "user::rw- user:daemon:r-x group::r-- mask::r-x other::---"},
        {"a\\b\\Users", 2, "user::rw- group::r-- group:users:-w- mask::rw- other::---"},
        {"games", 0x10000000, "user::rw- user:games:rwx group::r-- mask::rwx other::---"},
        {"games", 0x100000, "user::rw- group::r-- other::---"},
        {"BUILTIN\\administrators", 1, "user::rw- group::r-- group:sudo:r-- mask::r-- other::---"},
        {"SYSTEM", 0x20, "user::rwx user:root:--x group::r-- mask::r-x other::---"},  // the owner
        {"W\\everyone", 0x20, "user::rwx group::r-x other::--x"}};
    for (const auto& [account, mask, access] : rows) {
        const std::string host = NewFile(0640);
        EXPECT_EQ(AddAccess(file, account, mask), 0) << account;
        EXPECT_EQ(test::AccessOf(host), access + " root:root") << account;
    }
}

TEST_F(FileSecurityTest, GrantsAddUp) {
    const std::string host = NewFile(0664);
    AddAccess(file, "games", 1);
    chmod(host.c_str(), 0604);  // hides every right but the owner's and the others'
    for (const auto& [account, mask] : {std::pair{"daemon", 2}, {"daemon", 0x20}, {"Everyone", 1}})
        EXPECT_EQ(AddAccess(file, account, static_cast<std::uint32_t>(mask)), 0);
    EXPECT_EQ(test::AccessOf(host),
              "user::rw- user:daemon:rwx user:games:r-- group::r-- mask::rwx other::r-- root:root");
    EXPECT_EQ(RemoveAllAccess(file, false), 0);
    EXPECT_EQ(test::AccessOf(host), "user::rw- group::--- other::--- root:root");
}

TEST_F(FileSecurityTest, FoldersPassGrantsOn) {
    const std::string host = NewFolder(0550);
    EXPECT_EQ(AddAccess(folder, "games", kFull), 0);
    EXPECT_EQ(AddAccess(folder, "users", kReadAndExecute), 0);
    EXPECT_EQ(test::AccessOf(host),
              "user::r-x user:games:rwx group::r-x group:users:r-x mask::rwx other::--- "
              "default:user::rwx default:user:games:rwx default:group::r-x default:group:users:r-x "
              "default:mask::rwx default:other::--- root:root");
    test::WriteHostFile(host + "/sub/file", "x");
    EXPECT_TRUE(test::CanRun("games", host, ": >>sub/file"));
    EXPECT_FALSE(test::CanRun("daemon", host, ": <sub/file"));
    EXPECT_EQ(RemoveAllAccess(folder, true), 0);
    EXPECT_EQ(test::AccessOf(host), "user::r-x group::--- other::--- root:root");
}

TEST_F(FileSecurityTest, GrantsOutliveOwnership) {
    const std::string host = NewFile(0400);
    EXPECT_EQ(SetFileOwner(file, "w\\Games"), 0);
    AddAccess(file, "games", kFull);
    AddAccess(file, "daemon", 3);
    EXPECT_EQ(test::AccessOf(host),
              "user::rwx user:daemon:rw- user:games:rwx group::--- mask::rwx other::--- games:root");
    EXPECT_EQ(RemoveAllAccess(file, true), 0);
    AddAccess(file, "daemon", 3);
    AddAccess(file, "games", 1);
    chmod(host.c_str(), 0460);
    EXPECT_EQ(SetFileOwner(file, "daemon"), 0);  // its own entry counts for nothing from now on
    EXPECT_EQ(test::AccessOf(host),
              "user::rw- user:daemon:rw- user:games:r-- group::--- mask::rw- other::--- daemon:root");
    EXPECT_EQ(SetFileOwner(file, "Administrators"), 0);
    EXPECT_TRUE(test::AccessOf(host).ends_with(" root:sudo"));
    EXPECT_TRUE(test::CanRun("daemon", c, ": <>file") && test::CanRun("games", c, ": <file"));
    EXPECT_FALSE(test::CanRun("games", c, ": >>file"));
}

TEST_F(FileSecurityTest, ResultCodes) {
    NewFile(0600);
    struct Row {
        Text path, account;
        int add, removeAll, owner;
    };
    const Row rows[] = {{"C:\\none", "daemon", 2, 2, 2},
                        {"C:\\none\\x", "daemon", 3, 3, 3},
                        {"C:\\file\\x", "daemon", 3, 3, 3},
                        {"D:\\x", "daemon", 3, 3, 3},
                        {file, "W\\no such account", 1332, 0, 1332},
                        {file, "W\\", 1332, 0, 1332},
                        {file, Text("root\0x", 6), 1332, 0, 1332},
                        {file, "Everyone", 0, 0, 1307},
                        {"Z:\\proc\\self\\status", "root", 50, 50, 0}};
    for (const Row& row : rows) {
        EXPECT_EQ(AddAccess(row.path, row.account, 1), row.add) << row.path << row.account;
        EXPECT_EQ(RemoveAllAccess(row.path, true), row.removeAll) << row.path;
        EXPECT_EQ(SetFileOwner(row.path, row.account), row.owner) << row.path << row.account;
    }
    chmod(test::Root().c_str(), 0711);
    ASSERT_EQ(seteuid(5), 0);
    EXPECT_EQ(AddAccess(file, "games", 1), 5);
    EXPECT_EQ(SetFileOwner(file, "games"), 1307);
    EXPECT_FALSE(EnableProcessPrivilege("SeTakeOwnershipPrivilege"));
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_TRUE(EnableProcessPrivilege("SeTakeOwnershipPrivilege"));
}

/// A user must not be granted the rights to a file of root's through a link of its own making.
TEST_F(FileSecurityTest, Links) {
    const std::string host = NewFile(0600);
    for (const auto& [link, target] :
         {std::pair{"relative", "file"}, {"chain", "relative"}, {"loop", "loop"}})
        std::filesystem::create_symlink(target, c + "/" + link);
    std::filesystem::create_symlink(host, c + "/planted");
    ASSERT_EQ(lchown((c + "/planted").c_str(), 5, 60), 0);
    std::filesystem::create_symlink("planted", c + "/led");
    for (const auto& [link, code] :
         {std::pair{"relative", 0}, {"chain", 0}, {"planted", 5}, {"led", 5}, {"loop", 1921}}) {
        const Text path = Text("C:\\") + link;
        chmod(host.c_str(), 0644);
        EXPECT_EQ(RemoveAllAccess(path, true), code) << link;
        EXPECT_EQ(AddAccess(path, "games", 1), code) << link;
        EXPECT_EQ(SetFileOwner(path, "root"), code) << link;
        EXPECT_EQ(test::AccessOf(host).find("other::---") != std::string::npos, code == 0) << link;
    }
}

}  // namespace
}  // namespace rvl::platform
