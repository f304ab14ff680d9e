#include "net/yield.h"

#include "platform/event_loop.h"

namespace rvl {
namespace {

int g_depth = 0;

class YieldLevel {
 public:
    YieldLevel() { ++g_depth; }
    ~YieldLevel() { --g_depth; }
    YieldLevel(const YieldLevel&) = delete;
    YieldLevel& operator=(const YieldLevel&) = delete;
};

}  // namespace

void YieldToPendingEvents() {
    constexpr int kDeepest = 4;
    if (g_depth >= kDeepest) return;
    const YieldLevel level;
    platform::ProcessPendingEvents();
}

}  // namespace rvl
