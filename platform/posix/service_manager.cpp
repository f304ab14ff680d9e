#include "platform/service_manager.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include "platform/error.h"
#include "platform/posix/detached_process.h"
#include "platform/posix/errno_mapping.h"
#include "platform/posix/service_lock.h"
#include "platform/posix/service_table.h"

namespace rvl::platform {
namespace {

using Kind = ServiceEntry::Kind;

constexpr std::chrono::seconds kStartTime{10};
constexpr std::chrono::milliseconds kNap{20};

/// What the registry and the locks raise becomes the result.
template <class Operation>
int CodeOf(Operation operation) try {
    return operation();
} catch (const Error& error) {
    return error.Number();
}

/// The process may end with its claim passed on to another one: what counts is the claim.
int AwaitRunning(DetachedProcess& process) {
    const auto deadline = std::chrono::steady_clock::now() + kStartTime;
    while (std::chrono::steady_clock::now() < deadline) {
        const bool ended = process.HasEnded();  // first: what it has become before its end is seen below
        const ServiceState state = FindServiceHolder().state;
        if (state == ServiceState::Running || state == ServiceState::StopPending) return 0;
        if (ended && state == ServiceState::Stopped) return kServiceNotInTime;
        std::this_thread::sleep_for(kNap);
    }
    process.End();  // it would only stand in the way of the next start
    return kServiceNotInTime;
}

/// The number of a process that ends may become that of another one at any moment; a process that was the
/// holder after it was opened is the one that gets the signal, or nobody.
int SignalHolder(const ServiceHolder& holder) {
    const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, holder.process, 0)));
    if (!process.IsOpen()) return errno == ESRCH ? kServiceNotActive : Win32ErrorFromErrno(errno);
    if (FindServiceHolder().process != holder.process) return kServiceNotActive;
    if (::syscall(SYS_pidfd_send_signal, process.Get(), SIGTERM, nullptr, 0) == 0) return 0;
    return errno == ESRCH ? kServiceNotActive : Win32ErrorFromErrno(errno);
}

}  // namespace

int RegisterService(const ServiceDescription& description) {
    return CodeOf([&] {
        const ServiceTableLock table;
        const Kind kind = ReadServiceEntry(table, description.name).kind;
        if (kind != Kind::Missing) return kind == Kind::Marked ? kServiceMarkedForDeletion : kServiceExists;
        WriteServiceEntry(table, description);
        return 0;
    });
}

int UnregisterService(const Text& name) {
    return CodeOf([&] {
        const ServiceTableLock table;
        const Kind kind = ReadServiceEntry(table, name).kind;
        if (kind != Kind::Present)
            return kind == Kind::Marked ? kServiceMarkedForDeletion : kServiceDoesNotExist;
        MarkServiceEntry(table, name);
        ReadServiceEntry(table, name);  // removes it unless its service runs
        return 0;
    });
}

/// The table stays locked until the service runs, so that of two that start it one does and one is told.
int LaunchService(const Text& name) {
    return CodeOf([&] {
        const ServiceTableLock table;
        const ServiceEntry entry = ReadServiceEntry(table, name);
        if (entry.kind != Kind::Present)
            return entry.kind == Kind::Marked ? kServiceMarkedForDeletion : kServiceDoesNotExist;
        if (FindServiceHolder().state != ServiceState::Stopped) return kServiceAlreadyRunning;
        DetachedProcess process;
        const int code = process.Start(entry.commandLine);
        return code != 0 ? code : AwaitRunning(process);
    });
}

int SendStopControl(const Text& name) {
    return CodeOf([&] {
        ServiceTableLock::DemandAccess();
        if (ReadServiceEntry(name).kind == Kind::Missing) return kServiceDoesNotExist;
        const ServiceHolder holder = FindServiceHolder();
        if (holder.state == ServiceState::Stopped) return kServiceNotActive;
        if (holder.state == ServiceState::StopPending) return kServiceCannotAcceptControl;
        return SignalHolder(holder);
    });
}

int QueryServiceState(const Text& name, ServiceState& state) {
    state = ServiceState::NotInstalled;
    return CodeOf([&] {
        if (ReadServiceEntry(name).kind == Kind::Missing) return kServiceDoesNotExist;
        state = FindServiceHolder().state;
        return 0;
    });
}

Text RegisteredServiceCommandLine(const Text& name) {
    return ReadServiceEntry(name).commandLine;
}

}  // namespace rvl::platform
