#pragma once

#include <cstddef>

#include "platform/text.h"

namespace rvl::platform {

/// What a path buffer holds, its closing NUL included.
inline constexpr std::size_t kPathBuffer = 260;

/// The absolute form of a path, which need not exist: relative to the current folder, without ".", ".." and
/// doubled separators, all of them "\"; case and a trailing separator stay. Win32 codes: 0, 123 for an empty
/// path or one with a NUL, 3 without a current folder, 206 when the result does not fit into a path buffer.
int FullPath(const Text& path, Text& absolute);

}  // namespace rvl::platform
