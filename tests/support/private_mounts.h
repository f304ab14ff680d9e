#pragma once

#include <cstdint>
#include <string>

namespace rvl::test {

/// Obstacles of the file system that only this test meets. On Linux they are mounts that only this process
/// sees, and are not granted where the system does not let it have them.
class PrivateMounts {
 public:
    PrivateMounts();
    ~PrivateMounts();
    PrivateMounts(const PrivateMounts&) = delete;
    PrivateMounts& operator=(const PrivateMounts&) = delete;

    /// False where there is no such disk to be had. Wine has none but the host's.
    bool MountDisk(const std::string& folder, const std::string& size);

    /// Makes the file one that can be neither deleted nor replaced; false where that is not granted.
    bool Hold(const std::string& file);

    /// Ends either.
    void Unmount(const std::string& path);

 private:
    std::intptr_t m_held = 0;
};

}  // namespace rvl::test
