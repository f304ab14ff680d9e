#pragma once

#include "platform/text.h"

namespace rvl::platform {

/// Holds a name that at most one process of the workstation holds at a time. It falls free when the process
/// ends, however that ends. False when another process holds it, or nobody can; true again for the one that
/// does.
bool HoldProcessClaim(const Text& name);

/// True while some process holds the name.
bool IsProcessClaimHeld(const Text& name);

}  // namespace rvl::platform
