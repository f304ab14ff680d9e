#pragma once

namespace rvl {

/// Lets the pending events of the process run once. Handlers that run there may yield again, but only a few
/// levels deep: beyond that the call does nothing, so that a thousand connections closing at once cannot
/// exhaust the stack.
void YieldToPendingEvents();

}  // namespace rvl
