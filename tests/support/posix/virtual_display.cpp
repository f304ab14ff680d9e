#include "tests/support/virtual_display.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace rvl::test {
namespace {

/// It chooses its number and does not start anew when its last client leaves.
[[noreturn]] void RunServer(int told) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // also when the test does not come to its end
    const std::string descriptor = std::to_string(told);
    if (std::freopen("/dev/null", "w", stderr) != nullptr)
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "1024x768x24", "-nolisten",
               "tcp", "-noreset", nullptr);
    _exit(127);
}

}  // namespace

VirtualDisplay::VirtualDisplay() {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    m_server = fork();
    if (m_server == 0) RunServer(ends[1]);
    close(ends[1]);
    const std::unique_ptr<FILE, int (*)(FILE*)> told(fdopen(ends[0], "r"), fclose);
    int number = 0;
    if (std::fscanf(told.get(), "%d", &number) != 1) throw std::runtime_error("Xvfb does not start");
    setenv("DISPLAY", (":" + std::to_string(number)).c_str(), 1);
}

void VirtualDisplay::End() {
    if (m_server <= 0) return;
    kill(m_server, SIGTERM);
    waitpid(m_server, nullptr, 0);
    m_server = 0;
}

}  // namespace rvl::test
