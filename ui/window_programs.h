#pragma once

#include <cstdint>

#include "platform/text.h"
#include "session/upgrade_wait.h"

namespace rvl {

// The processes that are a window. Each runs until its window is unloaded or the user's session ends, and
// returns the exit code: 1 when there is no display, which standard error says.

int RunHelper(const UpgradeWait& upgradeWait);
int RunSwitchboard(const UpgradeWait& upgradeWait);
int RunStartFrontend(std::int32_t frontendId, const Text& title);

}  // namespace rvl
