#pragma once

#include <string>

#include "platform/text.h"

namespace rvl::platform {

/// Replaces the content of a shortcut file as a whole or leaves it as it was. Win32 codes.
int ReplaceLinkFile(const Text& path, const std::string& bytes);

/// The content of a shortcut file. Win32 codes; 11 for a file too large for any shortcut.
int ReadLinkFile(const Text& path, std::string& bytes);

}  // namespace rvl::platform
