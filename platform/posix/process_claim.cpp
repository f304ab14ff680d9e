#include "platform/process_claim.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <map>
#include <utility>

#include "platform/posix/descriptor.h"
#include "platform/posix/workstation_root.h"

namespace rvl::platform {
namespace {

/// What this process holds, until it ends.
std::map<Text, Descriptor>& HeldClaims() {
    static std::map<Text, Descriptor> claims;
    return claims;
}

Descriptor OpenLockFile(const Text& name) {
    const std::string path = WorkstationRoot() + "/" + Utf8FromText(name) + ".lock";
    return Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
}

}  // namespace

bool HoldProcessClaim(const Text& name) {
    if (HeldClaims().count(name) != 0) return true;
    Descriptor file = OpenLockFile(name);
    if (!file.IsOpen() || ::flock(file.Get(), LOCK_EX | LOCK_NB) != 0) return false;
    HeldClaims()[name] = std::move(file);
    return true;
}

/// Asking takes a share for a moment: several may ask at once, and who wants to hold the name tries again.
bool IsProcessClaimHeld(const Text& name) {
    if (HeldClaims().count(name) != 0) return true;
    const Descriptor file = OpenLockFile(name);
    return file.IsOpen() && ::flock(file.Get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

}  // namespace rvl::platform
