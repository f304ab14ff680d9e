#pragma once

#include <sched.h>
#include <sys/mount.h>

#include <string>

namespace rvl::test {

/// Mounts that only this test process sees. Not granted where the system does not let it have them.
class PrivateMounts {
 public:
    bool Granted() const { return m_granted; }

    bool MountDisk(const std::string& folder, const std::string& size) const {
        return mount("tmpfs", folder.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
    }

    /// Makes the file one that can be neither deleted nor replaced.
    bool Hold(const std::string& file) const {
        return mount(file.c_str(), file.c_str(), nullptr, MS_BIND, nullptr) == 0;
    }

    void Unmount(const std::string& path) const {
        if (m_granted) umount2(path.c_str(), MNT_DETACH);
    }

 private:
    bool m_granted =
        unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
};

}  // namespace rvl::test
