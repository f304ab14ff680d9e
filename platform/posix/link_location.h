#pragma once

#include <string>
#include <string_view>

#include "platform/text.h"

namespace rvl::platform {

/// The link-info block of an absolute path on a drive, its length in front ([MS-SHLLINK] 2.3).
std::string LinkLocation(const Text& path);

/// The path of such a block; the one on the network where it has both. False when the block is malformed.
bool ReadLinkLocation(std::string_view block, Text& path);

}  // namespace rvl::platform
