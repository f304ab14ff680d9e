#pragma once

#include <string>

namespace rvl::platform {

/// A path as the system completes it: from the current folder on, without ".", ".." and doubled separators.
/// Empty when the system refuses it.
std::wstring AbsolutePath(const std::wstring& path);

}  // namespace rvl::platform
