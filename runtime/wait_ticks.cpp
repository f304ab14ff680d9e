#include "runtime/wait_ticks.h"

#include "platform/event_loop.h"
#include "util/tick_count.h"

namespace rvl {

void WaitTicks(std::int64_t intervalMs) {
    constexpr std::uint32_t kLongestNap = 50;
    const std::uint64_t start = GetTickCountEx();
    while (!CheckTickCountEx(start, intervalMs))
        platform::WaitForEvents(kLongestNap);
}

}  // namespace rvl
