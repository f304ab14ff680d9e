#pragma once

#include <functional>

namespace rvl::platform {

/// Called from the event loop when the console this process was started from closes. The system ends the
/// process afterwards, or some seconds later in any case.
void OnConsoleClosed(std::function<void()> handler);

}  // namespace rvl::platform
