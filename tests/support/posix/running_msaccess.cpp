#include "tests/support/running_msaccess.h"

#include <csignal>

#include "tests/support/host_shell.h"
#include "tests/support/posix/xprop.h"

namespace rvl::test {

const std::uint32_t kExitCodeOfQuit = 128 + SIGTERM, kExitCodeOfKill = 128 + SIGKILL;
const int kHangIgnores = 1;

std::string Xprop(platform::WindowHandle window, const std::string& arguments) {
    return OutputOf("xprop -id " + std::to_string(window) + " " + arguments);
}

void OrderMsaccess(platform::WindowHandle window, const std::string& order) {
    Xprop(window, "-f MSACCESS_COMMAND 8u -set MSACCESS_COMMAND '" + order + "'");
}

}  // namespace rvl::test
