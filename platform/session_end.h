#pragma once

#include <functional>

namespace rvl::platform {

/// Called from the event loop when the user's session ends, or the process is asked to end by the system.
void OnSessionEnd(std::function<void()> handler);

}  // namespace rvl::platform
