#pragma once

#include <windows.h>

#include <future>
#include <thread>
#include <utility>

#include "platform/win32/com.h"

namespace rvl::platform {

/// Code that a thread still runs is never unloaded.
inline void KeepThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(&KeepThisModule), &module);
}

/// Asks something that another program or a network drive may never answer, on a thread of its own with the
/// component library. Who waits long enough gives up the answer; `ask` owns what it uses.
template <class Ask>
auto AskOnThread(Ask ask) {
    KeepThisModule();
    std::packaged_task task([ask = std::move(ask)] {
        const ComScope com;
        return ask();
    });
    auto answer = task.get_future();
    std::thread(std::move(task)).detach();
    return answer;
}

}  // namespace rvl::platform
