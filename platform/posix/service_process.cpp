#include "platform/service_process.h"

#include <fcntl.h>
#include <glib-unix.h>
#include <malloc.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/event_loop.h"
#include "platform/posix/event_dispatch.h"
#include "platform/posix/workstation_root.h"
#include "platform/registry.h"

namespace rvl::platform {
namespace {

constexpr int kStopControl = 1;

int g_claim = -1;
ServiceEvents g_events;

/// The lock of the one service of this workstation root; it ends with the process, however that ends.
ServiceStart Claim() {
    const std::string path = WorkstationRoot() + "/service.lock";
    g_claim = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (g_claim < 0) return ServiceStart::Failed;
    if (::flock(g_claim, LOCK_EX | LOCK_NB) == 0) return ServiceStart::Started;
    const bool taken = errno == EWOULDBLOCK;
    EndServiceProcess();
    return taken ? ServiceStart::AlreadyRunning : ServiceStart::Failed;
}

gboolean OnStopSignal(gpointer) {
    DispatchEvent([] {
        g_events.control(kStopControl);
        g_events.stop();
    });
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

ServiceStart StartServiceProcess(ServiceEvents events) {
    const ServiceStart claimed = Claim();
    if (claimed != ServiceStart::Started) return claimed;
    RaiseDescriptorLimit();
    KeepFreedMemory();
    g_events = std::move(events);
    g_unix_signal_add(SIGTERM, OnStopSignal, nullptr);
    g_unix_signal_add(SIGINT, OnStopSignal, nullptr);
    std::signal(SIGHUP, SIG_IGN);  // closing the terminal it was started from does not end a service
    PostEvent([] { g_events.start(); });
    return ServiceStart::Started;
}

void EndServiceProcess() {
    if (g_claim >= 0) ::close(std::exchange(g_claim, -1));
}

Text RegisteredServiceCommandLine(const Text& serviceName) {
    const auto value = ReadRegistry(RegistryRoot::LocalMachine,
                                    "SYSTEM\\CurrentControlSet\\Services\\" + serviceName, "ImagePath");
    const Text* text = value ? std::get_if<Text>(&*value) : nullptr;
    return text != nullptr ? *text : Text();
}

}  // namespace rvl::platform
