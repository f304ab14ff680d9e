// The conversions between texts and numbers of text_functions.h.

#include <charconv>
#include <limits>

#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

/// A decimal number taken apart; views into the text it came from.
struct Decimal {
    bool negative = false;
    TextView whole;
    TextView fraction;
};

bool AllDigits(TextView text) {
    return text.find_first_not_of("0123456789") == TextView::npos;
}
bool AllZeros(TextView digits) {
    return digits.find_first_not_of('0') == TextView::npos;
}

std::optional<Decimal> ParseDecimal(TextView text) {
    Decimal number;
    TextView rest = TrimView(text);
    if (!rest.empty() && (rest[0] == '-' || rest[0] == '+')) {
        number.negative = rest[0] == '-';
        rest.remove_prefix(1);
    }
    const std::size_t point = rest.find('.');
    number.whole = rest.substr(0, point);
    if (point != TextView::npos) number.fraction = rest.substr(point + 1);
    if (number.whole.empty() && number.fraction.empty()) return std::nullopt;
    if (!AllDigits(number.whole) || !AllDigits(number.fraction)) return std::nullopt;
    return number;
}

/// None beyond 64 bits.
std::optional<std::uint64_t> Magnitude(TextView digits) {
    std::uint64_t value = 0;
    if (digits.empty()) return value;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec != std::errc()) return std::nullopt;
    return value;
}

/// The signed value of a magnitude; none when it lies outside the type.
template <typename Integer>
std::optional<Integer> Signed(bool negative, std::uint64_t magnitude) {
    const std::uint64_t limit = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max()) + negative;
    if (magnitude > limit) return std::nullopt;
    return static_cast<Integer>(negative ? 0 - magnitude : magnitude);
}

bool RoundsUp(TextView fraction, bool odd) {
    if (fraction.empty() || fraction[0] < '5') return false;
    const bool half = fraction[0] == '5' && AllZeros(fraction.substr(1));
    return !half || odd;
}

/// None beyond 32 bits.
std::optional<std::int32_t> Rounded(const Decimal& number) {
    std::optional<std::uint64_t> magnitude = Magnitude(number.whole);
    if (!magnitude || *magnitude > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    if (RoundsUp(number.fraction, *magnitude % 2 != 0)) ++*magnitude;
    return Signed<std::int32_t>(number.negative, *magnitude);
}

bool IsNonZeroNumber(TextView text) {
    const std::optional<Decimal> number = ParseDecimal(text);
    return number && !(AllZeros(number->whole) && AllZeros(number->fraction));
}

}  // namespace

Text NumberText(std::int64_t value) {
    return std::to_string(value);
}

std::int32_t ToLong(TextView text) {
    const std::optional<Decimal> number = ParseDecimal(text);
    if (!number) RaiseTypeMismatch("Util.ToLong");
    const std::optional<std::int32_t> value = Rounded(*number);
    if (!value) RaiseOverflow("Util.ToLong");
    return *value;
}

std::int32_t ParseLongOr(TextView text, std::int32_t fallback) {
    const std::optional<Decimal> number = ParseDecimal(text);
    return number ? Rounded(*number).value_or(fallback) : fallback;
}

std::optional<std::int64_t> ParseInteger64(TextView text) {
    const std::optional<Decimal> number = ParseDecimal(text);
    if (!number || text.find('.') != TextView::npos) return std::nullopt;
    const std::optional<std::uint64_t> magnitude = Magnitude(number->whole);
    if (!magnitude) return std::nullopt;
    return Signed<std::int64_t>(number->negative, *magnitude);
}

bool toBool(TextView text) {
    const TextView trimmed = TrimView(text);
    if (trimmed.empty()) return false;
    const Text first = LowerCase(trimmed.substr(0, 1));
    if (TextView("ytap").find(first) != TextView::npos) return true;
    if (TextView("nfd").find(first) != TextView::npos) return false;
    return IsNonZeroNumber(trimmed);
}

}  // namespace rvl
