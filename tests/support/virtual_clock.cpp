#include "tests/support/virtual_clock.h"

#include <algorithm>

#include "runtime/timer_queue.h"
#include "util/tick_count.h"

namespace rvl::test {
namespace {

std::uint32_t g_now = 0;

}  // namespace

VirtualClock::VirtualClock(std::uint32_t start) {
    g_now = start;
    UseTickSource([] { return g_now; });
}

VirtualClock::~VirtualClock() {
    UseTickSource(nullptr);
}

void VirtualClock::Advance(std::uint64_t milliseconds) {
    const std::uint64_t end = GetTickCountEx() + milliseconds;
    for (;;) {
        const auto next = TimerQueue::Instance().NextDeadline();
        if (!next || *next > end) break;
        g_now += static_cast<std::uint32_t>(std::max(*next, GetTickCountEx()) - GetTickCountEx());
        TimerQueue::Instance().RunDueTimers();
    }
    g_now += static_cast<std::uint32_t>(end - GetTickCountEx());
}

}  // namespace rvl::test
