#pragma once

#include <cstdint>

#include "util/long_vector.h"

namespace rvl {

/// 'text' with every apostrophe doubled.
Text QuoteSQLString(TextView text);

/// The code of a location that the server names ("USER_PROFILE" 1, "PROGRAM_FILES" 2, "CUSTOM" 3), without
/// regard to case and surrounding spaces. Any other text is reported as an error and gives 0.
std::int32_t StringToDestinationLocation(const Text& text);

LongVector StringToLongVector(TextView text, TextView separator);

}  // namespace rvl
