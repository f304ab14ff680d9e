#include "platform/posix/host_path.h"
#include "platform/sqlite.h"

namespace rvl::platform {

std::string SqliteFileName(const Text& path) {
    return HostPath(path);
}

}  // namespace rvl::platform
