#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl::platform {

/// What a shortcut file (".lnk") says. Every text ends at its first NUL.
struct ShellLink {
    Text target;  ///< file or folder; a relative one is taken in the current folder when the link is written
    Text arguments;
    Text workingDirectory;
    Text description;
    Text iconLocation;  ///< file that holds the icon; empty: the target's own
    int iconIndex = 0;
    int showCommand = 1;  ///< 1 normal, 3 maximized, 7 minimized and not activated; anything else counts as 1
};

// Results are Win32 error codes, 0 for success: 2 file not found, 3 path not found, 5 access denied, 112 disk
// full ...

/// Replaces the file as a whole or leaves it as it was, whenever the machine stops. An empty target is left
/// out. Codes also: those of FullPath for the target, 87 when a text is too long for the format.
int WriteShellLink(const Text& path, const ShellLink& link);

/// 11 when the file is no shortcut; `link` then stays as it was. A text with a character above 255 raises
/// "Conversion would cause data loss".
int ReadShellLink(const Text& path, ShellLink& link);

/// Reads a shortcut and has the shell look for its target: 2 when that does not exist. `link` is what was
/// read even so. Flags are those of the shell (SLR_...); the window owns the dialogs that they allow and is 0
/// for none; the time-out bounds the search without dialogs, 0 is the shell's own. Linux, where nothing but
/// the target's own path is looked at, needs none of the three.
int ResolveShellLink(const Text& path, std::uint32_t flags, std::intptr_t window, int timeOutMilliseconds,
                     ShellLink& link);

}  // namespace rvl::platform
