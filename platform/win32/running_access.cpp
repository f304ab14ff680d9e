#include "platform/running_access.h"

#include <map>

#include "platform/win32/access_application.h"
#include "platform/win32/automation.h"
#include "platform/win32/question.h"
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
    std::optional<Question<Answer>> question;  ///< that it has not answered
};

/// Nothing new is asked of one that owes an answer.
void AskAgain(HWND window, Acquaintance& access) {
    DWORD patience = 0;
    if (!access.question) {
        if (IsHungAppWindow(window)) return;
        access.question.emplace([window] { return Ask(window); });
        patience = 500;
    }
    if (!access.question->IsOver(patience)) return;
    std::optional<Answer> answer = access.question->Wait(0);
    access.question.reset();
    if (answer && !answer->busy) access.said = std::move(answer->access);
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
    AskAgain(HwndOf(accessWindow), access);
    return access.said;
}

}  // namespace rvl::platform
