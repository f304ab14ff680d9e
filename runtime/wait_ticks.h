#pragma once

#include <cstdint>

namespace rvl {

/// Keeps processing events until the interval has expired.
void WaitTicks(std::int64_t intervalMs);

}  // namespace rvl
