#include "platform/posix/detached_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/posix/errno_mapping.h"
#include "platform/posix/program_arguments.h"
#include "platform/posix/workstation_root.h"

namespace rvl::platform {
namespace {

std::vector<std::string> EnvironmentOfChild() {
    constexpr std::string_view kRoot = "RVL_ROOT=";
    std::vector<std::string> environment{std::string(kRoot) + WorkstationRoot()};
    for (char** variable = environ; *variable != nullptr; ++variable)
        if (!std::string_view(*variable).starts_with(kRoot)) environment.emplace_back(*variable);
    return environment;
}

std::vector<char*> PointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers(texts.size() + 1);  // the last one stays null
    std::transform(texts.begin(), texts.end(), pointers.begin(),
                   [](std::string& text) { return text.data(); });
    return pointers;
}

/// What a detached child does between fork and exec.
class Detachment {
 public:
    Detachment() {
        posix_spawn_file_actions_init(&m_actions);
        for (int stream = 0; stream < 3; ++stream)
            posix_spawn_file_actions_addopen(&m_actions, stream, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_addclosefrom_np(&m_actions, 3);
        posix_spawn_file_actions_addchdir_np(&m_actions, "/");
        sigset_t none, all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setflags(&m_attributes,
                                 POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~Detachment() {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }
    Detachment(const Detachment&) = delete;
    Detachment& operator=(const Detachment&) = delete;

    int Spawn(pid_t& process, char* const* arguments, char* const* environment) const {
        return posix_spawn(&process, arguments[0], &m_actions, &m_attributes, arguments, environment);
    }

 private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

}  // namespace

int DetachedProcess::Start(const Text& commandLine) {
    constexpr int kFileNotFound = 2, kBadFormat = 193;
    std::vector<std::string> arguments = ProgramArguments(commandLine), environment = EnvironmentOfChild();
    if (arguments.empty()) return kFileNotFound;
    const int error =
        Detachment().Spawn(m_process, PointersTo(arguments).data(), PointersTo(environment).data());
    return error == ENOEXEC ? kBadFormat : Win32ErrorFromErrno(error);
}

void DetachedProcess::End() {
    constexpr int kNaps = 100;
    constexpr useconds_t kNapMicroseconds = 20000;
    if (HasEnded()) return;
    kill(m_process, SIGTERM);
    for (int nap = 0; nap < kNaps && !HasEnded(); ++nap)
        usleep(kNapMicroseconds);
    if (m_process == 0) return;
    kill(m_process, SIGKILL);
    waitpid(std::exchange(m_process, 0), nullptr, 0);
}

bool DetachedProcess::HasEnded() {
    if (m_process != 0 && waitpid(m_process, nullptr, WNOHANG) == m_process) m_process = 0;
    return m_process == 0;
}

}  // namespace rvl::platform
