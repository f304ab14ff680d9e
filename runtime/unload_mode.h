#pragma once

#include "platform/text.h"

namespace rvl {

/// Why the process is asked to unload; the numbers are the system's.
enum class UnloadMode {
    Closing = 0,
    ByCode = 1,
    SessionEnding = 2,
    TaskManager = 3,
    MdiClosing = 4,
    OwnerClosing = 5
};

Text UnloadModeName(UnloadMode mode);

/// The service unloads when it wants to itself or when the session ends, and in any way while it makes room
/// for an update.
bool MayUnload(UnloadMode mode, bool closingForUpdate);

}  // namespace rvl
