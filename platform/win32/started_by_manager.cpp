#include "platform/win32/started_by_manager.h"

#include <windows.h>

#include <tlhelp32.h>

#include <algorithm>
#include <cwchar>
#include <vector>

#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

/// Empty when the system does not tell.
std::vector<PROCESSENTRY32W> RunningProcesses() {
    std::vector<PROCESSENTRY32W> processes;
    const UniqueHandle snapshot = OwnHandle(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W process{};
    process.dwSize = sizeof process;
    if (!snapshot || !Process32FirstW(snapshot.get(), &process)) return processes;
    do
        processes.push_back(process);
    while (Process32NextW(snapshot.get(), &process));
    return processes;
}

}  // namespace

/// The manager is the parent of its services' processes, and lives as long as the system.
bool MayBeStartedByServiceManager() {
    const std::vector<PROCESSENTRY32W> processes = RunningProcesses();
    const auto own = std::find_if(processes.begin(), processes.end(), [](const PROCESSENTRY32W& process) {
        return process.th32ProcessID == GetCurrentProcessId();
    });
    if (own == processes.end()) return true;
    return std::any_of(processes.begin(), processes.end(), [&](const PROCESSENTRY32W& process) {
        return process.th32ProcessID == own->th32ParentProcessID &&
               _wcsicmp(process.szExeFile, L"services.exe") == 0;
    });
}

}  // namespace rvl::platform
