#include "util/tick_count.h"

#include "platform/clock.h"

namespace rvl {
namespace {

constexpr std::uint64_t kWrap = std::uint64_t{1} << 32;

struct TickState {
    std::uint32_t (*source)() = platform::TickCount32;
    std::uint64_t offset = 0;
    std::uint32_t last = 0;
};

TickState g_ticks;

}  // namespace

std::uint64_t GetTickCountEx() {
    const std::uint32_t tick = g_ticks.source();
    if (tick < g_ticks.last) g_ticks.offset += kWrap;
    g_ticks.last = tick;
    return g_ticks.offset + tick;
}

bool CheckTickCountEx(std::uint64_t start, std::int64_t intervalMs) {
    if (intervalMs <= 0 || start == 0) return true;
    return GetTickCountEx() > start + static_cast<std::uint64_t>(intervalMs);
}

void UseTickSource(std::uint32_t (*source)()) {
    g_ticks = TickState{};
    if (source != nullptr) g_ticks.source = source;
}

std::int64_t Uint32ToCurrency(std::int32_t value) {
    return static_cast<std::uint32_t>(value);
}

}  // namespace rvl
