#pragma once

#include <string>

#include "platform/text.h"

namespace rvl::platform {

/// Replaces the content of a shortcut file as a whole or leaves it as it was. Its bytes are on the disk
/// before it takes its name: a few milliseconds, for the two shortcuts of a deployment, against one of length
/// 0 after a power cut. Win32 codes.
int ReplaceLinkFile(const Text& path, const std::string& bytes);

/// The content of a shortcut file. Win32 codes; 11 for a file too large for any shortcut.
int ReadLinkFile(const Text& path, std::string& bytes);

}  // namespace rvl::platform
