#include "tests/support/child_process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace rvl::test {
namespace {

constexpr const char* kVariable = "RVL_TEST_CHILD";

}  // namespace

const int kAffordableProcesses = 32;

ChildProcess::ChildProcess(const std::string& test, const std::string& argument) {
    const pid_t child = fork();
    if (child == 0) {
        setenv(kVariable, argument.c_str(), 1);
        const std::string command = "exec '" + ThisProgram() + "' " + ChildArguments(test);
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    m_id = static_cast<std::uint32_t>(child);
    m_handle = child;
}

bool ChildProcess::HasEnded() {
    int status = 0;
    if (m_handle == 0 || waitpid(static_cast<pid_t>(m_id), &status, WNOHANG) == 0) return m_handle == 0;
    m_handle = 0;
    m_exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : kKilled;
    return true;
}

int ChildProcess::Wait() {
    while (!HasEnded())
        usleep(200);
    return m_exitCode;
}

void ChildProcess::Kill() {
    if (m_handle != 0) KillProcess(m_id);
}

std::string ChildProcess::Argument() {
    const char* argument = std::getenv(kVariable);
    return argument != nullptr ? argument : "";
}

std::string ThisProgram() {
    return std::filesystem::read_symlink("/proc/self/exe").string();
}

std::string StartedAs() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::string line, word;
    while (std::getline(file, word, '\0'))
        line += (line.empty() ? "" : " ") + word;
    return line;
}

void KillProcess(std::uint32_t process) {
    kill(static_cast<pid_t>(process), SIGKILL);
}

}  // namespace rvl::test
