#include "deploy/ntfs_permissions.h"

#include <gtest/gtest.h>

#include "tests/support/workstation.h"

namespace rvl {
namespace {

TEST(NTFSPermissions, BuiltInNames) {
    test::ClearLog();
    EXPECT_EQ(AdministratorsGroupName(), "Administrators");
    EXPECT_EQ(EveryoneGroupName(), "Everyone");
    EXPECT_EQ(LocalSystemUsername(), "SYSTEM");
    EXPECT_EQ(GetBuiltInName(2, 5, 32, 544), "BUILTIN\\Administrators");
    EXPECT_EQ(GetBuiltInName(1, 5, 18, 544), "NT AUTHORITY\\SYSTEM");
    EXPECT_EQ(GetBuiltInName(1, 1, 0, 0), "Everyone");
    EXPECT_EQ(test::LogContent(), "");
    EXPECT_EQ(GetBuiltInName(2, 5, 18, 544), "");
    EXPECT_TRUE(test::Logged("GetBuiltInName: LookupAccountSid failed"));
    EXPECT_EQ(GetBuiltInName(0, 5, 18, 0), "");
    EXPECT_TRUE(test::Logged("GetBuiltInName: AllocateAndInitializeSid failed"));
}

}  // namespace
}  // namespace rvl
