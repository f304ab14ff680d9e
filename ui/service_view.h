#pragma once

#include <functional>
#include <memory>

#include "runtime/unload_mode.h"
#include "session/service_view.h"

namespace rvl {

/// The window of a service that is debugged; its process then runs on the toolkit's loop. `mayUnload` is
/// asked when the user closes it. Null when there is no display.
std::unique_ptr<ServiceView> OpenServiceWindow(const Text& caption,
                                               std::function<bool(UnloadMode)> mayUnload);

}  // namespace rvl
