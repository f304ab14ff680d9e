#pragma once

#include <functional>

namespace rvl::platform {

/// Runs an event handler at the edge to GLib's C code: what it throws ends in the event error handler.
void DispatchEvent(const std::function<void()>& handler) noexcept;

/// From now on no call lets pending events run, for a process that ends inside the handler of one.
void EndNestedLoops();

}  // namespace rvl::platform
