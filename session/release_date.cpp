#include "session/release_date.h"

#include <algorithm>
#include <chrono>
#include <optional>

#include "util/dates.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

/// A '0' stands for any digit.
bool HasForm(TextView text, TextView form) {
    const auto fits = [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; };
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), fits);
}

bool IsPossible(const platform::CalendarTime& time) {
    using namespace std::chrono;
    const year_month_day date(year(time.year), month(static_cast<unsigned>(time.month)),
                              day(static_cast<unsigned>(time.day)));
    return date.ok() && time.hour < 24 && time.minute < 60 && time.second < 60;
}

std::optional<platform::CalendarTime> ReadDate(const Text& text) {
    if (!HasForm(text, "0000-00-00") && !HasForm(text, "0000-00-00 00:00") &&
        !HasForm(text, "0000-00-00 00:00:00"))
        return std::nullopt;
    const auto number = [&](std::size_t from, std::size_t digits) {
        return from < text.size() ? ParseLongOr(text.substr(from, digits), 0) : 0;
    };
    const platform::CalendarTime time{number(0, 4),  number(5, 2),  number(8, 2),
                                      number(11, 2), number(14, 2), number(17, 2)};
    return IsPossible(time) ? std::optional(time) : std::nullopt;
}

}  // namespace

Text ReleaseDateText(const Text& date) {
    const auto time = ReadDate(Trim(date));
    if (!time) return date;
    const bool atMidnight = time->hour == 0 && time->minute == 0 && time->second == 0;
    return FormatDateTime(*time).substr(0, atMidnight ? 10 : 16);
}

}  // namespace rvl
