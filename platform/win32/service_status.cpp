#include "platform/win32/service_status.h"

#include <mutex>

namespace rvl::platform {
namespace {

/// How long, in milliseconds, the manager has to see no further step before it takes the service for stuck.
constexpr DWORD kWaitHint = 30000;

std::mutex g_mutex;
SERVICE_STATUS_HANDLE g_manager = nullptr;
SERVICE_STATUS g_status{};

bool IsPending(DWORD state) {
    return state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING;
}

/// How far the service has come; the system's numbers are in no order.
int StepOf(DWORD state) {
    switch (state) {
        case SERVICE_START_PENDING:
            return 1;
        case SERVICE_RUNNING:
            return 2;
        case SERVICE_STOP_PENDING:
            return 3;
        default:
            return 4;
    }
}

/// Controls are only for a running service: the system refuses them while it starts or stops.
void Tell(DWORD state) {
    g_status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    g_status.dwCurrentState = state;
    g_status.dwControlsAccepted =
        state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN : 0;
    g_status.dwCheckPoint = IsPending(state) ? g_status.dwCheckPoint + 1 : 0;
    g_status.dwWaitHint = IsPending(state) ? kWaitHint : 0;
    SetServiceStatus(g_manager, &g_status);
}

}  // namespace

void BeginServiceStatus(SERVICE_STATUS_HANDLE manager) {
    const std::lock_guard lock(g_mutex);
    g_manager = manager;
    g_status = {};
    Tell(SERVICE_START_PENDING);
}

void AdvanceServiceStatus(DWORD state) {
    const std::lock_guard lock(g_mutex);
    if (g_manager != nullptr && StepOf(state) >= StepOf(g_status.dwCurrentState)) Tell(state);
}

void EndServiceStatus(DWORD exitCode) {
    const std::lock_guard lock(g_mutex);
    if (g_manager == nullptr) return;
    g_status.dwWin32ExitCode = exitCode;
    Tell(SERVICE_STOPPED);
    g_manager = nullptr;
}

}  // namespace rvl::platform
