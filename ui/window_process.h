#pragma once

#include <functional>

#include "platform/text.h"

namespace rvl {

/// Starts the toolkit for a process that is nothing but a window; false, with a line on standard error, when
/// there is no display.
bool StartWindowProcess(const Text& window);

/// Runs it until its window is unloaded, at the latest when the user's session ends. When the display goes
/// away, `displayLost` runs and the process ends; its windows are gone by then.
int RunWindowProcess(const std::function<void()>& displayLost);

}  // namespace rvl
