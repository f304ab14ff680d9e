#pragma once

#include <cstdint>

namespace rvl::platform {

/// Milliseconds since system start, wrapping after 32 bits.
std::uint32_t TickCount32();

struct CalendarTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

CalendarTime LocalNow();

}  // namespace rvl::platform
