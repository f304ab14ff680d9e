#include "platform/clock.h"

#include <windows.h>

namespace rvl::platform {

/// The clock of the loop's wake-up too: both stand still while the machine sleeps, so that nobody is found
/// silent for the time in which nobody could speak.
std::uint32_t TickCount32() {
    constexpr ULONGLONG kUnitsPerMillisecond = 10'000;
    ULONGLONG units = 0;
    QueryUnbiasedInterruptTime(&units);
    return static_cast<std::uint32_t>(units / kUnitsPerMillisecond);
}

CalendarTime LocalNow() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

}  // namespace rvl::platform
