#include "platform/posix/service_lock.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/error.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/errno_mapping.h"
#include "platform/posix/workstation_root.h"
#include "platform/system_message.h"

namespace rvl::platform {
namespace {

// The service holds one byte of the file for each step it has come to. These are locks of the process rather
// than of the open file, since only they name their holder; nothing else in the service may open the file,
// since closing it would end them.
constexpr off_t kClaimed = 0, kRunning = 1, kStopping = 2;

Descriptor g_claim;
ServiceState g_state = ServiceState::Stopped;

std::string LockFile() {
    return WorkstationRoot() + "/service.lock";
}

struct flock ByteOf(off_t step) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = step;
    lock.l_len = 1;
    return lock;
}

bool Hold(const Descriptor& file, off_t step) {
    struct flock lock = ByteOf(step);
    return ::fcntl(file.Get(), F_SETLK, &lock) == 0;
}

[[noreturn]] void RaiseErrno() {
    const int code = Win32ErrorFromErrno(errno);
    throw Error(code, "ServiceManager", SystemMessage(code));
}

bool IsHeld(const Descriptor& file, off_t step, pid_t& holder) {
    struct flock lock = ByteOf(step);
    if (::fcntl(file.Get(), F_GETLK, &lock) != 0) RaiseErrno();
    holder = lock.l_type == F_UNLCK ? 0 : lock.l_pid;
    return lock.l_type != F_UNLCK;
}

}  // namespace

ServiceStart ClaimServiceLock() {
    Descriptor file(::open(LockFile().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!file.IsOpen()) return ServiceStart::Failed;
    if (!Hold(file, kClaimed))
        return errno == EAGAIN || errno == EACCES ? ServiceStart::AlreadyRunning : ServiceStart::Failed;
    g_claim = std::move(file);
    g_state = ServiceState::StartPending;
    return ServiceStart::Started;
}

/// A service that was asked to stop while it started stays a stopping one.
void AdvanceServiceLock(ServiceState reached) {
    if (!g_claim.IsOpen() || g_state == ServiceState::StopPending) return;
    Hold(g_claim, reached == ServiceState::Running ? kRunning : kStopping);
    g_state = reached;
}

void ReleaseServiceLock() {
    g_claim = Descriptor();
    g_state = ServiceState::Stopped;
}

ServiceHolder FindServiceHolder() {
    if (g_claim.IsOpen()) return {g_state, getpid()};
    const Descriptor file(::open(LockFile().c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen() && errno == ENOENT) return {};
    if (!file.IsOpen()) RaiseErrno();
    ServiceHolder holder;
    if (IsHeld(file, kStopping, holder.process))
        holder.state = ServiceState::StopPending;
    else if (IsHeld(file, kRunning, holder.process))
        holder.state = ServiceState::Running;
    else if (IsHeld(file, kClaimed, holder.process))
        holder.state = ServiceState::StartPending;
    return holder;
}

}  // namespace rvl::platform
