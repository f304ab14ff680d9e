#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// What a socket or operating-system error number means, in one line; empty when nobody knows it.
Text GetErrorString(std::int32_t number);

/// Raises an error that describes what the operating system refused: text + "API Error " + number + ": " +
/// its message.
[[noreturn]] void APIError(const Text& text, std::int32_t number);

}  // namespace rvl
