#pragma once

#include <functional>

namespace rvl::platform {

/// Runs an event handler at the edge to GLib's C code: what it throws ends in the event error handler.
void DispatchEvent(const std::function<void()>& handler) noexcept;

}  // namespace rvl::platform
