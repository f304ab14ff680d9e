#pragma once

#include <string>

#include "platform/text.h"

namespace rvl::platform {

/// A path as every file call of the system takes it, also when it is longer than 259 characters: absolute and
/// behind "\\?\". One that names no file of a drive or share goes as it is; one that holds a NUL becomes
/// empty, which every call refuses.
std::wstring LongPath(const Text& path);

}  // namespace rvl::platform
