#include "net/yield.h"

#include "platform/event_loop.h"
#include "util/scoped_state.h"

namespace rvl {
namespace {

int g_depth = 0;

}  // namespace

void YieldToPendingEvents() {
    constexpr int kDeepest = 4;
    if (g_depth >= kDeepest) return;
    const ScopedDepth level(g_depth);
    platform::ProcessPendingEvents();
}

}  // namespace rvl
