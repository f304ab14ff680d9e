#pragma once

#include <cstdint>
#include <optional>

#include "platform/text.h"

namespace rvl {

// Addresses are 32-bit values in network byte order.

/// Four decimal numbers 0-255 without leading zeros, joined by points, and nothing else; otherwise none.
std::optional<std::uint32_t> ParseDotted(TextView text);

Text DottedText(std::uint32_t networkOrder);

}  // namespace rvl
