#pragma once

#include <sys/types.h>

#include "platform/text.h"

namespace rvl::platform {

/// The end of a watched child is taken note of by the caller, that of another one by nobody.
enum class ChildEnd { Unwatched, Watched };

/// Starts a command line whose first word is the program, in a session of its own. Returns a Win32 code.
int SpawnChild(const Text& commandLine, ChildEnd end, pid_t& process);

}  // namespace rvl::platform
