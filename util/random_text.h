#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// Makes the numbers of RandomBetween repeatable. Without it they begin anywhere.
void SeedRandom(std::uint64_t seed);

/// A uniform choice, both ends included, of no use for secrets; `low` when the range is empty.
std::int32_t RandomBetween(std::int32_t low, std::int32_t high);

// What follows cannot be guessed and does not depend on SeedRandom.

/// Each character is of one of the classes digit, upper-case and lower-case letter with equal probability.
Text RandomNonce(std::size_t length);

/// A new GUID in its 38 character form: braces, upper case. Empty when it fails.
Text GenerateGUIDString();

}  // namespace rvl
