#include "tests/support/private_network.h"

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace rvl::test {
namespace {

bool Enter() {
    if (unshare(CLONE_NEWNET) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return false;
    const int any = socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP | IFF_RUNNING | IFF_LOOPBACK;
    const bool up = ioctl(any, SIOCSIFFLAGS, &request) == 0;
    close(any);
    return up;
}

}  // namespace

bool EnterPrivateNetwork() {
    static const bool entered = Enter();
    return entered;
}

}  // namespace rvl::test
