#include "platform/clock.h"

#include <ctime>

namespace rvl::platform {

/// The clock of the loop's wake-up too: both stand still while the machine sleeps, so that nobody is found
/// silent for the time in which nobody could speak.
std::uint32_t TickCount32() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const std::uint64_t milliseconds =
        static_cast<std::uint64_t>(now.tv_sec) * 1000 + static_cast<std::uint64_t>(now.tv_nsec) / 1000000;
    return static_cast<std::uint32_t>(milliseconds);
}

CalendarTime LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    tzset();  // localtime_r alone would never notice a changed time zone
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

}  // namespace rvl::platform
