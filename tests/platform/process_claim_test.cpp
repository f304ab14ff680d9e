#include "platform/process_claim.h"

#include <gtest/gtest.h>

#include "tests/support/child_process.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

/// Not a test: a process that holds a name until it is killed.
TEST(ProcessClaimChild, DISABLED_Holds) {
    ASSERT_TRUE(test::RunUntil([] { return HoldProcessClaim("test"); }));  // who asks holds it for a moment
    test::RunUntil([] { return false; }, 60000);
}

TEST(ProcessClaim, FallsFreeWithItsProcess) {
    EXPECT_FALSE(IsProcessClaimHeld("test"));
    test::ChildProcess child("ProcessClaimChild.DISABLED_Holds");
    EXPECT_TRUE(test::RunUntil([] { return IsProcessClaimHeld("test"); }));
    EXPECT_FALSE(HoldProcessClaim("test") || IsProcessClaimHeld("other"));
    child.Kill();
    EXPECT_EQ(child.Wait(), test::ChildProcess::kKilled);
    EXPECT_TRUE(test::RunUntil([] { return HoldProcessClaim("test"); }));
    EXPECT_TRUE(HoldProcessClaim("test") && IsProcessClaimHeld("test"));
}

}  // namespace
}  // namespace rvl::platform
