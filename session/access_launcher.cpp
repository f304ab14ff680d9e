#include "session/access_launcher.h"

#include <algorithm>

#include "platform/started_process.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "session/access_windows.h"
#include "session/window_tags.h"
#include "util/handle_error.h"
#include "util/scoped_state.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr std::uint32_t kLookIntervalMs = 500;

Text Quoted(const Text& text) {
    return "\"" + text + "\"";
}

Text Switch(const Text& name, const Text& value) {
    return value.empty() ? Text() : " " + name + " " + Quoted(value);
}

Text CommandLineOf(const FrontendLaunch& launch) {
    return Quoted(launch.accessPath) + " " + Quoted(launch.databasePath) +
           Switch("/wrkgrp", launch.workgroupPath) + Switch("/user", launch.user) +
           Switch("/pwd", launch.password);
}

void LogAttempt(const FrontendLaunch& launch) {
    Log("Attempting to launch " + Quoted(launch.name) + " at " + Quoted(launch.databasePath) + " using " +
        Quoted(launch.accessPath) + " (ID #" + NumberText(launch.frontendId) + "/" +
        NumberText(launch.frontendVersionId) + ")");
}

void Refuse(const Text& problem) {
    MsgBox(problem, kIconCritical);
}

bool HasQuit(const AccessProcess& process) {
    const std::optional<std::uint32_t> code = process.ExitCode();
    if (code == platform::StartedProcess::kStillActive) return false;
    Log(code ? "Access quit with error code #" + NumberText(*code) : Text("Access seems to have quit"));
    return true;
}

}  // namespace

AccessLauncher::AccessLauncher(Desktop& desktop, std::function<void()> onStarted)
    : m_desktop(desktop), m_onStarted(std::move(onStarted)), m_lookAgain([this] { LookAndTell(); }) {
    m_lookAgain.SetInterval(kLookIntervalMs);
}

void AccessLauncher::StartFrontend(const FrontendLaunch& launch) try {
    LogAttempt(launch);
    if (!FileExists(launch.accessPath)) return Refuse("Microsoft Access is not installed.");
    if (!FileExists(launch.databasePath)) return Refuse("The frontend is not installed.");
    auto process = m_desktop.Start(CommandLineOf(launch));
    if (!process) return Refuse("Microsoft Access is currently unavailable.");
    m_pending.push_back({launch, std::move(process)});
    if (!m_lookAgain.Enabled()) m_lookAgain.SetEnabled(true);
    LookAndTell();
} catch (...) {
    HandleError("AccessInteraction.StartFrontend");
}

bool AccessLauncher::IsLaunching(TextView databasePath) const {
    return std::ranges::any_of(m_pending, [&](const Pending& pending) {
        return EqualsNoCase(pending.launch.databasePath, databasePath);
    });
}

void AccessLauncher::LookAndTell() {
    if (LookAtPendingLaunches()) m_onStarted();
}

bool AccessLauncher::LookAtPendingLaunches() {
    if (m_looking) return false;
    const ScopedFlag looking(m_looking);
    bool found = false;
    for (auto pending = m_pending.begin(); pending != m_pending.end();) {
        const bool quit = HasQuit(*pending->process);
        const WindowHandle window = quit ? 0 : pending->process->MainWindow();
        if (window != 0) OnWindowFound(pending->launch, window);
        found = found || window != 0;
        pending = quit || window != 0 ? m_pending.erase(pending) : std::next(pending);
    }
    if (m_pending.empty()) m_lookAgain.SetEnabled(false);
    return found;
}

void AccessLauncher::OnWindowFound(const FrontendLaunch& launch, WindowHandle window) try {
    if (m_desktop.IsWindow(window)) Tag(launch, window);
    Log("Access hWnd = " + HexString(static_cast<std::int32_t>(window)) + " (" + HandleText(window) + ")");
    if (!IsRegistered(window)) Log("Unable to locate Access instance in ROT");
    m_desktop.BringToForeground(window);
} catch (...) {
    HandleError("AccessInteraction.StartFrontend");
}

void AccessLauncher::Tag(const FrontendLaunch& launch, WindowHandle window) {
    TagFrontend(m_desktop, window, launch.frontendId);
    TagFrontendVersion(m_desktop, window, launch.frontendVersionId);
    TagStartTick(m_desktop, window, GetTickCountEx());
}

/// Access registers itself among the running objects only when it is asked to, or when it loses the focus.
bool AccessLauncher::IsRegistered(WindowHandle window) {
    m_desktop.AskToRegister(window);
    if (m_desktop.AccessObject(window)) return true;
    m_desktop.PretendActivation(window);
    return m_desktop.AccessObject(window).has_value();
}

}  // namespace rvl
