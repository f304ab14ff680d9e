#include "platform/started_process.h"

#include <glib.h>
#include <sys/wait.h>

#include "platform/posix/spawn_child.h"

namespace rvl::platform {

struct StartedProcess::Impl {
    pid_t process;
    std::optional<std::uint32_t> ended;  ///< its exit code; it is a process no longer
};

namespace {

/// The way shells name it.
std::uint32_t CodeOf(const siginfo_t& end) {
    constexpr int kSignalled = 128;
    return static_cast<std::uint32_t>(end.si_code == CLD_EXITED ? end.si_status : kSignalled + end.si_status);
}

void ForgetChild(GPid process, gint, gpointer) {
    g_spawn_close_pid(process);
}

}  // namespace

StartedProcess::StartedProcess(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}

std::unique_ptr<StartedProcess> StartedProcess::Start(const Text& commandLine, int& error) {
    pid_t process = 0;
    error = SpawnChild(commandLine, ChildEnd::Watched, process);
    if (error != 0) return nullptr;
    auto impl = std::make_unique<Impl>(Impl{process, {}});
    return std::unique_ptr<StartedProcess>(new StartedProcess(std::move(impl)));
}

/// One that still runs is waited for by the event loop, so that nothing of it stays.
StartedProcess::~StartedProcess() {
    if (ExitCode() == kStillActive) g_child_watch_add(m_impl->process, ForgetChild, nullptr);
}

std::uint32_t StartedProcess::ProcessId() const {
    return static_cast<std::uint32_t>(m_impl->process);
}

std::optional<std::uint32_t> StartedProcess::ExitCode() const {
    if (m_impl->ended) return m_impl->ended;
    siginfo_t end{};
    if (waitid(P_PID, static_cast<id_t>(m_impl->process), &end, WEXITED | WNOHANG) != 0) return std::nullopt;
    if (end.si_pid == 0) return kStillActive;
    m_impl->ended = CodeOf(end);
    return m_impl->ended;
}

WindowHandle StartedProcess::FindWindowOfClass(TextView windowClass) const {
    for (const WindowHandle window : TopLevelWindows())
        if (WindowProcessId(window) == ProcessId() && HasWindowClass(window, windowClass)) return window;
    return 0;
}

}  // namespace rvl::platform
