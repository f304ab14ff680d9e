#include "platform/win32/service_start.h"

#include <algorithm>

#include "platform/service_manager.h"
#include "platform/win32/service_handle.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

constexpr DWORD kNap = 20;

/// A service says how long its next step may take, and takes one after another.
class Patience {
 public:
    bool IsOver(const SERVICE_STATUS_PROCESS& status) {
        constexpr ULONGLONG kLeast = 10000, kMost = 90000;  // in all
        const ULONGLONG now = GetTickCount64();
        if (status.dwCheckPoint != m_step) m_stepBegan = now;
        m_step = status.dwCheckPoint;
        return now - m_stepBegan >= std::max<ULONGLONG>(kLeast, status.dwWaitHint) || now - m_began >= kMost;
    }

 private:
    const ULONGLONG m_began = GetTickCount64();
    ULONGLONG m_stepBegan = m_began;
    DWORD m_step = 0;
};

/// A service that found another one running says so; how else it ended is its own matter.
int ReasonOfEnd(const SERVICE_STATUS_PROCESS& status) {
    return status.dwWin32ExitCode == ERROR_SERVICE_ALREADY_RUNNING ? kServiceAlreadyRunning
                                                                   : kServiceNotInTime;
}

/// It would only stand in the way of the next start. The number of a process that ended may be that of
/// another one by now: it is ended if it still is the service after it was opened.
void EndProcessOf(SC_HANDLE service, DWORD id) {
    const UniqueHandle process = OwnHandle(OpenProcess(PROCESS_TERMINATE, FALSE, id));
    SERVICE_STATUS_PROCESS now{};
    if (process && QueryServiceProcess(service, now) == 0 && now.dwProcessId == id)
        TerminateProcess(process.get(), ERROR_SERVICE_REQUEST_TIMEOUT);
}

}  // namespace

int AwaitRunningService(SC_HANDLE service) {
    Patience patience;
    SERVICE_STATUS_PROCESS status{};
    do {
        if (const int code = QueryServiceProcess(service, status); code != 0) return code;
        if (status.dwCurrentState == SERVICE_STOPPED) return ReasonOfEnd(status);
        if (status.dwCurrentState != SERVICE_START_PENDING) return 0;
        Sleep(kNap);
    } while (!patience.IsOver(status));
    if (status.dwProcessId != 0) EndProcessOf(service, status.dwProcessId);
    return kServiceNotInTime;
}

}  // namespace rvl::platform
