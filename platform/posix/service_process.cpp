#include "platform/service_process.h"

#include <glib-unix.h>
#include <malloc.h>
#include <sys/resource.h>

#include <csignal>
#include <utility>

#include "platform/event_loop.h"
#include "platform/posix/event_dispatch.h"
#include "platform/posix/service_lock.h"
#include "platform/posix/service_table.h"

namespace rvl::platform {
namespace {

constexpr int kStopControl = 1;

Text g_name;
ServiceEvents g_events;

gboolean OnStopSignal(gpointer) {
    DispatchEvent([] {
        g_events.control(kStopControl);
        g_events.stop();
    });
    return G_SOURCE_CONTINUE;
}

/// Closing the terminal it was started from does not end a service.
gboolean OnTerminalClosed(gpointer) {
    DispatchEvent([] { g_events.closeWindow(); });
    return G_SOURCE_CONTINUE;
}

/// A workstation may have more local connections than the customary 1024 descriptors.
void RaiseDescriptorLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

/// The pieces of a transfer come and go by the thousand: their memory is kept instead of being given back to
/// the system and fetched again each time.
void KeepFreedMemory() {
    constexpr int kMegabyte = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, kMegabyte);
    mallopt(M_TRIM_THRESHOLD, 4 * kMegabyte);
}

}  // namespace

ServiceStart StartServiceProcess(const Text& serviceName, ServiceEvents events) {
    const ServiceStart claimed = ClaimServiceLock();
    if (claimed != ServiceStart::Started) return claimed;
    RaiseDescriptorLimit();
    KeepFreedMemory();
    g_name = serviceName;
    g_events = std::move(events);
    g_unix_signal_add(SIGTERM, OnStopSignal, nullptr);
    g_unix_signal_add(SIGINT, OnStopSignal, nullptr);
    g_unix_signal_add(SIGHUP, OnTerminalClosed, nullptr);
    PostEvent([] {
        g_events.start();
        AdvanceServiceLock(ServiceState::Running);
    });
    return ServiceStart::Started;
}

void ReportServiceStopping() {
    AdvanceServiceLock(ServiceState::StopPending);
}

/// An entry that is marked for deletion goes with the service, or else with the manager's next operation.
void EndServiceProcess() {
    ReleaseServiceLock();
    try {
        ReadServiceEntry(g_name);
    } catch (...) {  // the next operation will meet the same and tell
    }
}

}  // namespace rvl::platform
