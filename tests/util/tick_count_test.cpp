#include "util/tick_count.h"

#include <gtest/gtest.h>

namespace rvl {
namespace {

std::uint32_t g_tick = 0;

class TickCount : public ::testing::Test {
 protected:
    TickCount() {
        UseTickSource([] { return g_tick; });
    }
    ~TickCount() override { UseTickSource(nullptr); }

    static std::uint64_t At(std::uint32_t tick) {
        g_tick = tick;
        return GetTickCountEx();
    }
};

TEST_F(TickCount, GoesOnPastEveryWrap) {
    EXPECT_EQ(At(0xFFFFFFFF), 0xFFFFFFFFu);
    EXPECT_EQ(At(0), 0x100000000u);
    EXPECT_EQ(At(0), 0x100000000u);
    EXPECT_EQ(At(7), 0x100000007u);
    EXPECT_EQ(At(6), 0x200000006u);
}

TEST_F(TickCount, MeasuresIntervals) {
    const std::uint64_t start = At(0xFFFFFFF0);
    g_tick = 0xFFFFFFF0 + 1000;  // wrapped
    EXPECT_FALSE(CheckTickCountEx(start, 1000));
    ++g_tick;
    EXPECT_TRUE(CheckTickCountEx(start, 1000));
    EXPECT_TRUE(CheckTickCountEx(0, 1000000));
    EXPECT_TRUE(CheckTickCountEx(start + 1000000, 0));
    EXPECT_TRUE(CheckTickCountEx(start + 1000000, -1));
}

TEST_F(TickCount, AnotherSourceForgetsTheWraps) {
    At(5);
    EXPECT_EQ(At(4), 0x100000004u);
    UseTickSource([] { return g_tick; });
    EXPECT_EQ(At(3), 3u);
    UseTickSource(nullptr);
    const std::uint64_t now = GetTickCountEx();
    EXPECT_GE(GetTickCountEx(), now);
}

TEST_F(TickCount, ReadsLongsAsUnsigned) {
    EXPECT_EQ(Uint32ToCurrency(-1), 4294967295);
    EXPECT_EQ(Uint32ToCurrency(1), 1);
}

}  // namespace
}  // namespace rvl
