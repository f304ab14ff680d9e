#include "platform/win32/run_on_thread.h"

#include <windows.h>

#include <memory>
#include <utility>

#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

using Work = std::function<void()>;

DWORD WINAPI Run(void* parameter) noexcept {
    const std::unique_ptr<Work> work(static_cast<Work*>(parameter));
    (*work)();
    return 0;
}

/// Code that a thread still runs is never unloaded.
void KeepThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(&Run), &module);
}

}  // namespace

/// Not a thread of the standard library: detached, one of that built for this system may lose its work or
/// crash when it begins.
bool RunOnThread(std::function<void()> work) {
    KeepThisModule();
    auto owned = std::make_unique<Work>(std::move(work));
    const UniqueHandle thread(CreateThread(nullptr, 0, Run, owned.get(), 0, nullptr));
    if (thread) static_cast<void>(owned.release());  // the thread's
    return thread != nullptr;
}

}  // namespace rvl::platform
