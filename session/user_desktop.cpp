#include "session/user_desktop.h"

#include "platform/started_process.h"
#include "runtime/access_object.h"
#include "runtime/spawn_process.h"

namespace rvl {
namespace {

class StartedAccess : public AccessProcess {
 public:
    explicit StartedAccess(std::unique_ptr<platform::StartedProcess> process)
        : m_process(std::move(process)) {}

    std::optional<std::uint32_t> ExitCode() const override { return m_process->ExitCode(); }
    WindowHandle MainWindow() const override { return m_process->FindWindowOfClass(kAccessWindowClass); }

 private:
    std::unique_ptr<platform::StartedProcess> m_process;
};

}  // namespace

std::vector<WindowHandle> UserDesktop::TopLevelWindows() const {
    return platform::TopLevelWindows();
}

std::vector<WindowHandle> UserDesktop::ChildWindows(WindowHandle window) const {
    return platform::ChildWindows(window);
}

bool UserDesktop::IsWindow(WindowHandle window) const {
    return platform::IsWindow(window);
}

bool UserDesktop::HasClass(WindowHandle window, TextView windowClass) const {
    return platform::HasWindowClass(window, windowClass);
}

Text UserDesktop::WindowText(WindowHandle window) const {
    return platform::WindowText(window);
}

std::uint32_t UserDesktop::Property(WindowHandle window, const char* name) const {
    return platform::WindowProperty(window, name);
}

void UserDesktop::SetProperty(WindowHandle window, const char* name, std::uint32_t value) {
    platform::SetWindowProperty(window, name, value);
}

WindowHandle UserDesktop::Foreground() const {
    return platform::ForegroundWindow();
}

bool UserDesktop::BringToForeground(WindowHandle window) {
    return platform::BringToForeground(window);
}

void UserDesktop::RequestClose(WindowHandle window) {
    platform::RequestClose(window);
}

void UserDesktop::PostQuit(WindowHandle window) {
    platform::PostQuit(window);
}

void UserDesktop::TerminateProcessOf(WindowHandle window) {
    platform::TerminateProcessOf(window);
}

std::optional<RunningAccess> UserDesktop::AccessObject(WindowHandle accessWindow) const {
    return GetAccessObjectByHwnd(accessWindow);
}

void UserDesktop::AskToRegister(WindowHandle accessWindow) {
    platform::AskToRegister(accessWindow);
}

void UserDesktop::PretendActivation(WindowHandle accessWindow) {
    platform::PretendActivation(accessWindow);
}

std::unique_ptr<AccessProcess> UserDesktop::Start(const Text& commandLine) {
    auto process = SpawnWatchedProcess(commandLine);
    return process ? std::make_unique<StartedAccess>(std::move(process)) : nullptr;
}

}  // namespace rvl
