#include "tests/support/private_mounts.h"

#include <sched.h>
#include <sys/mount.h>

namespace rvl::test {
namespace {

/// Those of other processes stay as they are.
bool OwnMounts() {
    static const bool granted =
        unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return granted;
}

}  // namespace

PrivateMounts::PrivateMounts() = default;
PrivateMounts::~PrivateMounts() = default;

bool PrivateMounts::MountDisk(const std::string& folder, const std::string& size) {
    return OwnMounts() && mount("tmpfs", folder.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
}

bool PrivateMounts::Hold(const std::string& file) {
    return OwnMounts() && mount(file.c_str(), file.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

void PrivateMounts::Unmount(const std::string& path) {
    if (OwnMounts()) umount2(path.c_str(), MNT_DETACH);
}

}  // namespace rvl::test
