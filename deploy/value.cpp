#include "deploy/value.h"

#include <optional>

#include "platform/error.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

[[noreturn]] void RaiseInvalidUseOfNull() {
    throw Error(94, "Database", "Invalid use of Null");
}

}  // namespace

bool IsNull(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

Text NullTo(const Value& value, TextView fallback) {
    return IsNull(value) ? Text(fallback) : TextOf(value);
}

std::int64_t NullTo(const Value& value, std::int64_t fallback) {
    return IsNull(value) ? fallback : NumberOf(value);
}

Value EmptyToNull(const Text& text) {
    return text.empty() ? Value() : Value(text);
}

Text TextOf(const Value& value) {
    if (const auto* text = std::get_if<Text>(&value)) return *text;
    if (const auto* number = std::get_if<std::int64_t>(&value)) return NumberText(*number);
    RaiseInvalidUseOfNull();
}

std::int64_t NumberOf(const Value& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
    const auto* text = std::get_if<Text>(&value);
    if (text == nullptr) RaiseInvalidUseOfNull();
    const std::optional<std::int64_t> number = ParseInteger64(*text);
    if (!number) RaiseTypeMismatch("Database");
    return *number;
}

}  // namespace rvl
