#include "session/running_frontends.h"

#include <algorithm>

#include "runtime/log_file.h"
#include "session/access_windows.h"
#include "session/known_dialog.h"
#include "session/window_tags.h"
#include "util/handle_error.h"
#include "util/scoped_state.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

bool HaveSameIds(const RunningFrontend& a, const RunningFrontend& b) {
    return a.window == b.window && a.frontendId == b.frontendId;
}

bool AreEqual(const RunningFrontend& a, const RunningFrontend& b) {
    return HaveSameIds(a, b) && a.fullName == b.fullName;
}

bool Contains(const std::vector<RunningFrontend>& list, const RunningFrontend& frontend) {
    return std::ranges::any_of(list, [&](const RunningFrontend& other) { return AreEqual(other, frontend); });
}

Text VersionOf(const RunningAccess& access) {
    return access.build.empty() ? access.version : access.version + "." + access.build;
}

}  // namespace

void RunningFrontends::CheckForAccessWindows(const std::vector<WindowHandle>& topLevelWindows) try {
    if (m_checking) return;
    const ScopedFlag checking(m_checking);
    m_forgotten = false;
    CloseKnownDialogs(m_desktop, topLevelWindows);
    List now = Look(AccessMainWindows(m_desktop, topLevelWindows));
    std::vector<Message> messages;
    NoteEnded(now, messages);
    NoteStarted(now, messages);
    m_running = std::move(now);
    Send(messages);
} catch (...) {
    HandleError("frmClientHelper.CheckForAccessWindows");
}

void RunningFrontends::ReportAllAgain() {
    m_running.clear();
    m_forgotten = true;
}

bool RunningFrontends::IsFrontendRunning(std::int32_t frontendId) const {
    return std::ranges::find(m_running, frontendId, &RunningFrontend::frontendId) != m_running.end();
}

RunningFrontends::List RunningFrontends::Look(std::vector<WindowHandle> accessWindows) const {
    std::ranges::sort(accessWindows, {},
                      [](WindowHandle window) { return static_cast<std::int32_t>(window); });
    List list;
    for (const WindowHandle window : accessWindows)
        list.push_back(LookAt(window));
    return list;
}

RunningFrontend RunningFrontends::LookAt(WindowHandle window) const {
    RunningFrontend frontend;
    frontend.window = window;
    frontend.frontendId = FrontendIdOf(m_desktop, window);
    if (const auto access = m_desktop.AccessObject(window)) {
        frontend.accessVersion = VersionOf(*access);
        frontend.fullName = access->currentProject.value_or("");
    }
    return frontend;
}

void RunningFrontends::NoteEnded(List& now, std::vector<Message>& messages) {
    for (const RunningFrontend& before : m_running) {
        if (Contains(now, before)) continue;
        if (!before.fullName.empty())
            messages.push_back({"FRONTEND_END", {NumberText(before.frontendId), HandleText(before.window)}});
        const auto same = std::ranges::find_if(
            now, [&](const RunningFrontend& frontend) { return HaveSameIds(frontend, before); });
        if (same != now.end()) ForgetFrontend(*same);
    }
}

/// The window shows another database now: it is no longer the front end that it was started on.
void RunningFrontends::ForgetFrontend(RunningFrontend& frontend) {
    frontend.frontendId = 0;
    const bool exists = m_desktop.IsWindow(frontend.window);
    if (exists) {
        TagFrontend(m_desktop, frontend.window, 0);
        TagStartTick(m_desktop, frontend.window, 0);
    }
    Log("Access instance " + HandleText(frontend.window) +
        (exists ? " changed files" : " uhh.. disappaeared?"));
}

void RunningFrontends::NoteStarted(const List& now, std::vector<Message>& messages) const {
    for (const RunningFrontend& frontend : now)
        if (!frontend.fullName.empty() && !Contains(m_running, frontend))
            messages.push_back(StartMessage(frontend));
}

/// The other tags are read only here: most windows have nothing new to report.
RunningFrontends::Message RunningFrontends::StartMessage(const RunningFrontend& frontend) const {
    const std::uint64_t startTick = StartTickOf(m_desktop, frontend.window);
    const auto elapsed = static_cast<std::int64_t>(startTick == 0 ? 0 : GetTickCountEx() - startTick);
    return {"FRONTEND_START",
            {NumberText(frontend.frontendId), HandleText(frontend.window), NumberText(elapsed),
             frontend.accessVersion, frontend.fullName,
             NumberText(FrontendVersionIdOf(m_desktop, frontend.window))}};
}

/// Sending may let the connection be lost and made again: everything is to be reported anew then.
void RunningFrontends::Send(const std::vector<Message>& messages) {
    for (const Message& message : messages) {
        if (m_forgotten) return;
        m_report(message.command, message.params);
    }
}

}  // namespace rvl
