#pragma once

#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace rvl::test {

/// Puts this test process into a network of its own that has nothing but 127.0.0.0/8, so that the fixed ports
/// are free and a broadcast reaches nobody else. False where the system does not grant one.
inline bool EnterPrivateNetwork() {
    static const bool entered = [] {
        if (unshare(CLONE_NEWNET) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return false;
        const int any = socket(AF_INET, SOCK_DGRAM, 0);
        ifreq request{};
        std::strcpy(request.ifr_name, "lo");
        request.ifr_flags = IFF_UP | IFF_RUNNING | IFF_LOOPBACK;
        const bool up = ioctl(any, SIOCSIFFLAGS, &request) == 0;
        close(any);
        return up;
    }();
    return entered;
}

/// A test that needs such a network; it is skipped where there is none.
class PrivateNetworkTest : public testing::Test {
 protected:
    PrivateNetworkTest() : m_granted(EnterPrivateNetwork()) {}

    void SetUp() override {
        if (!m_granted) GTEST_SKIP() << "no private network";
    }

 private:
    bool m_granted;
};

}  // namespace rvl::test
