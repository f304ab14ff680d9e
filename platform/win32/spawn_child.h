#pragma once

#include <windows.h>

#include "platform/text.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {

/// A process that was started, with its first thread.
struct Child {
    UniqueHandle process;
    UniqueHandle thread;
    DWORD processId = 0;
    DWORD threadId = 0;
};

/// Starts a command line whose first word is the program, with nothing inherited but the environment. Returns
/// a Win32 code.
int SpawnChild(const Text& commandLine, Child& child);

}  // namespace rvl::platform
