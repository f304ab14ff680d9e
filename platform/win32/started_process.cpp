#include "platform/started_process.h"

#include "platform/win32/spawn_child.h"
#include "platform/win32/window_handle.h"

namespace rvl::platform {

struct StartedProcess::Impl {
    Child child;
    ULONGLONG started;  ///< tick
};

namespace {

/// A window that is found while the program still starts is not ready for what comes next; one that never
/// comes to wait for its user is given this long.
bool HasStarted(HANDLE process, ULONGLONG started) {
    constexpr ULONGLONG kMilliseconds = 2000;
    return WaitForInputIdle(process, 0) != WAIT_TIMEOUT || GetTickCount64() - started >= kMilliseconds;
}

struct Search {
    TextView windowClass;
    WindowHandle found;
};

BOOL CALLBACK IsOther(HWND window, LPARAM parameter) noexcept {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (!HasWindowClass(HandleOf(window), search.windowClass)) return TRUE;
    search.found = HandleOf(window);
    return FALSE;
}

}  // namespace

StartedProcess::StartedProcess(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}

std::unique_ptr<StartedProcess> StartedProcess::Start(const Text& commandLine, int& error) {
    Child child;
    error = SpawnChild(commandLine, child);
    if (error != 0) return nullptr;
    auto impl = std::make_unique<Impl>(Impl{std::move(child), GetTickCount64()});
    return std::unique_ptr<StartedProcess>(new StartedProcess(std::move(impl)));
}

StartedProcess::~StartedProcess() = default;

std::uint32_t StartedProcess::ProcessId() const {
    return m_impl->child.processId;
}

/// A process may end with the number that stands for one that runs.
std::optional<std::uint32_t> StartedProcess::ExitCode() const {
    DWORD code = 0;
    if (!GetExitCodeProcess(m_impl->child.process.get(), &code)) return std::nullopt;
    if (code == kStillActive && WaitForSingleObject(m_impl->child.process.get(), 0) == WAIT_OBJECT_0)
        return std::nullopt;
    return code;
}

WindowHandle StartedProcess::FindWindowOfClass(TextView windowClass) const {
    if (!HasStarted(m_impl->child.process.get(), m_impl->started)) return 0;
    Search search{windowClass, 0};
    EnumThreadWindows(m_impl->child.threadId, IsOther, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace rvl::platform
