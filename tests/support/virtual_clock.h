#pragma once

#include <cstdint>

namespace rvl::test {

/// Takes over the tick count for as long as it lives; the timers fire as the clock is moved, in order.
class VirtualClock {
 public:
    explicit VirtualClock(std::uint32_t start = 1000000);
    ~VirtualClock();
    VirtualClock(const VirtualClock&) = delete;
    VirtualClock& operator=(const VirtualClock&) = delete;

    void Advance(std::uint64_t milliseconds);
};

}  // namespace rvl::test
