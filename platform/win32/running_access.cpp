#include "platform/running_access.h"

#include <chrono>
#include <map>

#include "platform/win32/access_application.h"
#include "platform/win32/ask_on_thread.h"
#include "platform/win32/automation.h"
#include "platform/win32/window_handle.h"

namespace rvl::platform {
namespace {

/// One that is busy says nothing, which does not mean that it is not there.
struct Answer {
    bool busy = false;
    std::optional<RunningAccess> access;
};

std::optional<Text> CurrentProject(IDispatch& application, bool& busy) {
    Variant project, fullName;
    HRESULT result = Invoke(application, L"CurrentProject", project);
    if (const auto object = project.AsObject(); SUCCEEDED(result) && object)
        result = Invoke(*object, L"FullName", fullName);
    busy = busy || IsBusyAnswer(result);
    std::optional<Text> path = fullName.AsText();
    return path && !path->empty() ? path : std::nullopt;
}

Text TextOf(IDispatch& application, const wchar_t* property, bool& busy) {
    Variant value;
    busy = busy || IsBusyAnswer(Invoke(application, property, value));
    return value.AsText().value_or("");
}

Answer Ask(HWND window) {
    Answer answer;
    const auto application = AccessApplicationOf(window, answer.busy);
    if (!application) return answer;
    RunningAccess access;
    access.version = TextOf(*application, L"Version", answer.busy);
    access.build = TextOf(*application, L"Build", answer.busy);
    access.currentProject = CurrentProject(*application, answer.busy);
    if (!answer.busy) answer.access = std::move(access);
    return answer;
}

/// What is known of the Access of one window.
struct Acquaintance {
    std::uint32_t processId = 0;
    std::optional<RunningAccess> said;
    std::future<Answer> question;  ///< that it has not answered
};

bool IsAnswered(const std::future<Answer>& question, std::chrono::milliseconds patience) {
    return question.wait_for(patience) == std::future_status::ready;
}

/// Nothing new is asked of one that owes an answer.
void Question(HWND window, Acquaintance& access) {
    std::chrono::milliseconds patience{0};
    if (!access.question.valid()) {
        if (IsHungAppWindow(window)) return;
        access.question = AskOnThread([window] { return Ask(window); });
        patience = std::chrono::milliseconds(500);
    }
    if (!IsAnswered(access.question, patience)) return;
    Answer answer = access.question.get();
    if (!answer.busy) access.said = std::move(answer.access);
}

Acquaintance& AcquaintanceOf(WindowHandle window) {
    static std::map<WindowHandle, Acquaintance> all;
    std::erase_if(all, [](const auto& one) { return !IsWindow(one.first); });
    Acquaintance& access = all[window];
    const std::uint32_t processId = WindowProcessId(window);
    if (access.processId != processId) access = {processId, {}, {}};
    return access;
}

}  // namespace

/// Access may be busy, or hang, at any moment: what it last said then still holds.
std::optional<RunningAccess> FindRunningAccess(WindowHandle accessWindow) {
    if (!IsWindow(accessWindow)) return std::nullopt;
    Acquaintance& access = AcquaintanceOf(accessWindow);
    Question(HwndOf(accessWindow), access);
    return access.said;
}

}  // namespace rvl::platform
