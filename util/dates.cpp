#include "util/dates.h"

#include <chrono>
#include <cstdio>

#include "util/handle_error.h"

namespace rvl {
namespace {

constexpr std::int64_t kFirstSecond = -62167219200;  // 0000-01-01 00:00:00
constexpr std::int64_t kLastSecond = 253402300799;   // 9999-12-31 23:59:59

platform::CalendarTime UtcTime(platform::FileSeconds utc) {
    const std::chrono::sys_seconds moment{std::chrono::seconds(utc)};
    const auto midnight = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(moment - midnight);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count())};
}

}  // namespace

Text FormatDateTime(const platform::CalendarTime& time) {
    char buffer[96];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month, time.day,
                  time.hour, time.minute, time.second);
    return buffer;
}

Text SQLDate(platform::FileSeconds utc) try {
    if (utc < kFirstSecond || utc > kLastSecond) RaiseOverflow("Util.SQLDate");
    return '#' + FormatDateTime(UtcTime(utc)) + '#';
} catch (...) {
    HandleErrorAndReRaise("Util.SQLDate");
}

}  // namespace rvl
