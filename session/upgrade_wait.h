#pragma once

#include <functional>

#include "platform/text.h"

namespace rvl {

/// Starts the process that waits for the update to a new executable (its path); true: the caller ends itself.
using UpgradeWait = std::function<bool(const Text& newExecutable)>;

}  // namespace rvl
