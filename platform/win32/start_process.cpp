#include "platform/process.h"
#include "platform/win32/spawn_child.h"
#include "platform/win32/wide.h"

namespace rvl::platform {

/// A program for consoles gets one that nobody sees, whose keys and closing are none of its concern.
int SpawnChild(const Text& commandLine, Child& child) {
    std::wstring line = Wide(commandLine);  // the system may write into it
    if (line.find_first_not_of(L' ') == std::wstring::npos) return ERROR_FILE_NOT_FOUND;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                        &start, &started))
        return LastError();
    child = {UniqueHandle(started.hProcess), UniqueHandle(started.hThread), started.dwProcessId,
             started.dwThreadId};
    return 0;
}

int StartProcess(const Text& commandLine, std::uint32_t& processId) {
    Child child;
    const int code = SpawnChild(commandLine, child);
    if (code == 0) processId = child.processId;
    return code;
}

}  // namespace rvl::platform
