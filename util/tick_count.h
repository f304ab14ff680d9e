#pragma once

#include <cstdint>

namespace rvl {

/// Milliseconds since system start, counting on past the 32-bit wrap of the system's tick (some 49.7 days).
/// It has to be called at least once between two wraps.
std::uint64_t GetTickCountEx();

/// True when more than intervalMs have passed since start; at once when start is 0 or intervalMs is not
/// positive.
bool CheckTickCountEx(std::uint64_t start, std::int64_t intervalMs);

/// Reads the tick from `source` instead of the system, null for the system again, and forgets earlier wraps.
/// Tests move the clock with it.
void UseTickSource(std::uint32_t (*source)());

/// The value read as unsigned.
std::int64_t Uint32ToCurrency(std::int32_t value);

}  // namespace rvl
