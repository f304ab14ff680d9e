#pragma once

#include "platform/text.h"

namespace rvl {

/// MD5 digest of a file as 32 hexadecimal digits, read in pieces of 4096 bytes while others may read and
/// write it. A file that cannot be read is reported and gives the empty text, which matches no digest.
Text MD5SumOfFile(const Text& path);

}  // namespace rvl
