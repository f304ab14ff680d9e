#pragma once

#include <functional>

namespace rvl::platform {

/// Runs work on a thread that nobody waits for; it owns what it uses and lets no exception out. False when
/// the system has no thread.
bool RunOnThread(std::function<void()> work);

}  // namespace rvl::platform
