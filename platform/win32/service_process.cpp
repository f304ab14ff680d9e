#include "platform/service_process.h"

#include <windows.h>

#include <utility>

#include "platform/event_loop.h"
#include "platform/process_claim.h"
#include "platform/session_end.h"
#include "platform/win32/console_closed.h"
#include "platform/win32/event_queue.h"
#include "platform/win32/service_connection.h"
#include "platform/win32/service_status.h"

namespace rvl::platform {
namespace {

ServiceEvents g_events;

void OnControl(int control) {
    g_events.control(control);
    if (control == SERVICE_CONTROL_STOP || control == SERVICE_CONTROL_SHUTDOWN) g_events.stop();
}

Text ClaimName(const Text& serviceName) {
    return "Service " + serviceName;
}

/// A predecessor that has told the manager its end may take a moment more to end.
bool HoldClaimSoon(const Text& serviceName) {
    constexpr ULONGLONG kPatience = 5000;
    constexpr DWORD kNap = 50;
    const ULONGLONG deadline = GetTickCount64() + kPatience;
    while (!HoldProcessClaim(ClaimName(serviceName))) {
        if (GetTickCount64() > deadline) return false;
        Sleep(kNap);
    }
    return true;
}

ServiceStart BeginManagedService(const Text& serviceName) {
    if (HoldClaimSoon(serviceName)) return ServiceStart::Started;
    DisconnectFromServiceManager(ERROR_SERVICE_ALREADY_RUNNING);
    return ServiceStart::AlreadyRunning;
}

/// The service of somebody who debugs it, or whose manager has another one installed.
ServiceStart BeginForegroundService(const Text& serviceName) {
    if (!HoldProcessClaim(ClaimName(serviceName))) return ServiceStart::AlreadyRunning;
    OnSessionEnd([] { OnControl(SERVICE_CONTROL_STOP); });
    OnConsoleClosed([] { g_events.closeWindow(); });  // last: the first one that is asked
    return ServiceStart::Started;
}

ServiceStart BeginService(const Text& serviceName) {
    const int code = ConnectToServiceManager(
        serviceName, [](int control) { PostEventFromThread([control] { OnControl(control); }); });
    if (code == 0) return BeginManagedService(serviceName);
    const bool byHand = code == ERROR_FAILED_SERVICE_CONTROLLER_CONNECT;
    return byHand ? BeginForegroundService(serviceName) : ServiceStart::Failed;
}

}  // namespace

ServiceStart StartServiceProcess(const Text& serviceName, ServiceEvents events) {
    g_events = std::move(events);
    const ServiceStart begun = BeginService(serviceName);
    if (begun == ServiceStart::Started)
        PostEvent([] {
            AdvanceServiceStatus(SERVICE_START_PENDING);  // a step of its own, which may take as long again
            g_events.start();
            AdvanceServiceStatus(SERVICE_RUNNING);
        });
    return begun;
}

void ReportServiceStopping() {
    AdvanceServiceStatus(SERVICE_STOP_PENDING);
}

/// The claim goes with the process.
void EndServiceProcess() {
    DisconnectFromServiceManager(NO_ERROR);
}

}  // namespace rvl::platform
