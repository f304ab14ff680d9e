#pragma once

#include <functional>

namespace rvl {

// Exit codes of the process.
inline constexpr int kExitNormal = 0;
inline constexpr int kExitFatal = 1;
inline constexpr int kExitUserQuit = 2;

/// Ends the process at once. Unless silent, logs it and runs the last action (closing the database) first.
[[noreturn]] void Terminate(int exitCode, bool suppressTag = false, bool silent = false);

/// What has to be done before the process ends; its errors are ignored. An empty function does nothing.
void SetLastAction(std::function<void()> action);

}  // namespace rvl
