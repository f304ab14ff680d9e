#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace rvl::test {

/// An X server of its own, without a window manager; it chooses its number, which DISPLAY then names, and
/// does not start anew when its last client leaves.
class VirtualDisplay {
 public:
    VirtualDisplay() {
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
    ~VirtualDisplay() { End(); }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    void End() {
        if (m_server <= 0) return;
        kill(m_server, SIGTERM);
        waitpid(m_server, nullptr, 0);
        m_server = 0;
    }

 private:
    [[noreturn]] static void RunServer(int told) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);  // also when the test does not come to its end
        const std::string descriptor = std::to_string(told);
        if (std::freopen("/dev/null", "w", stderr) != nullptr)
            execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "1024x768x24",
                   "-nolisten", "tcp", "-noreset", nullptr);
        _exit(127);
    }

    pid_t m_server = 0;
};

/// What a program tells on its standard output.
inline std::string OutputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
    std::string content;
    for (int character; output && (character = std::fgetc(output.get())) != EOF;)
        content += static_cast<char>(character);
    return content;
}

}  // namespace rvl::test
