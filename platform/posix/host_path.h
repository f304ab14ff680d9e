#pragma once

#include <string>

#include "platform/text.h"

namespace rvl::platform {

/// The host's path (UTF-8) of a path of the system: drive C: is $RVL_ROOT/drive_c, drive Z: is /, a path that
/// begins with "/" is a host path already, one that begins with a single "\" stands at the root of drive C:,
/// a relative one in the current folder. Existing names are found without regard to case. A path on another
/// drive or a network share has no host path: the result is empty.
std::string HostPath(TextView path);

/// The system's path of an absolute host path: "C:\..." below drive_c, else "Z:\...".
Text WindowsPath(std::string_view hostPath);

}  // namespace rvl::platform
