#pragma once

#include <cstdint>

#include "platform/sqlite.h"

namespace rvl {

/// A value of the database: Null, a number of 64 bits, or a text.
using Value = platform::SqliteValue;

bool IsNull(const Value& value);

/// The value, or the fallback when it is Null.
Text NullTo(const Value& value, TextView fallback);
std::int64_t NullTo(const Value& value, std::int64_t fallback);

/// Null for the empty text.
Value EmptyToNull(const Text& text);

/// The value as a text (numbers in decimal) or as a number; Null raises 94 "Invalid use of Null", a text
/// that is no number 13 "Type mismatch".
Text TextOf(const Value& value);
std::int64_t NumberOf(const Value& value);

}  // namespace rvl
