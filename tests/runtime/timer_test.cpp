#include "runtime/timer.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/error.h"
#include "tests/support/virtual_clock.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

void Start(CTimer& timer, std::uint32_t interval) {
    timer.SetInterval(interval);
    timer.SetEnabled(true);
}

TEST(Timer, DueTimersTickByDeadlineAndThenByStart) {
    for (const std::uint32_t now : {1000000u, 0xFFFFFFFFu - 15}) {  // the tick wraps meanwhile
        test::VirtualClock clock(now);
        Text order;
        CTimer a([&] { order += 'a'; }), b([&] { order += 'b'; }), c([&] { order += 'c'; });
        Start(a, 30);
        Start(b, 10);
        Start(c, 10);
        clock.Advance(9);
        EXPECT_EQ(order, "");
        clock.Advance(21);
        EXPECT_EQ(order, "bcbcabc");
    }
}

struct TwoTimers {
    std::unique_ptr<CTimer> first, second;
    int firstTicks = 0, secondTicks = 0;
};

TEST(Timer, AHandlerMayDoAnythingToTimers) {
    const struct {
        const char* what;
        void (*act)(TwoTimers&);  ///< in the handler of the first of two that are due together
        int firstTicks, secondTicks;
    } rows[] = {{"stops itself", [](TwoTimers& timers) { timers.first->SetEnabled(false); }, 1, 5},
                {"destroys itself", [](TwoTimers& timers) { timers.first.reset(); }, 1, 5},
                {"stops the other", [](TwoTimers& timers) { timers.second->SetEnabled(false); }, 5, 0},
                {"destroys the other", [](TwoTimers& timers) { timers.second.reset(); }, 5, 0},
                {"restarts the other", [](TwoTimers& timers) { timers.second->SetInterval(10); }, 5, 0},
                {"arms itself anew", [](TwoTimers& timers) { timers.first->SetInterval(1); }, 41, 5},
                {"arms itself for later", [](TwoTimers& timers) { timers.first->SetInterval(25); }, 2, 5},
                {"throws", [](TwoTimers&) { throw Error(5, "Test", "boom"); }, 5, 5},
                {"throws anything", [](TwoTimers&) { throw 5; }, 5, 5}};
    for (const auto& row : rows) {
        test::VirtualClock clock;
        TwoTimers timers;
        timers.first = std::make_unique<CTimer>([&] { ++timers.firstTicks, row.act(timers); });
        timers.second = std::make_unique<CTimer>([&] { ++timers.secondTicks; });
        Start(*timers.first, 10);
        Start(*timers.second, 10);
        clock.Advance(50);
        EXPECT_EQ(timers.firstTicks, row.firstTicks) << row.what;
        EXPECT_EQ(timers.secondTicks, row.secondTicks) << row.what;
    }
    EXPECT_NE(test::LogContent().find(" from Test via CTimer.ThatTime\r\n\r\nboom"), Text::npos);
}

// A handler may show a message box, in which the other timers go on.
TEST(Timer, OthersTickWhileAHandlerWaits) {
    for (const std::uint32_t interval : {1u, 5u}) {  // due together, and due later
        int other = 0;
        bool waited = false, served = false;
        CTimer second([&] { ++other; });
        CTimer first([&] {
            if (!std::exchange(waited, true)) served = test::RunUntil([&] { return other > 0; }, 300);
        });
        Start(first, 1);
        Start(second, interval);
        EXPECT_TRUE(test::RunUntil([&] { return waited; }));
        EXPECT_TRUE(served) << interval;
    }
}

}  // namespace
}  // namespace rvl
