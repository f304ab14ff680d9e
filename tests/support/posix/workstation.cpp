#include "tests/support/workstation.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cstdlib>

#include "platform/posix/host_path.h"
#include "tests/support/accounts.h"
#include "tests/support/posix/workstation.h"
#include "tests/support/test_program.h"

namespace rvl::test {
namespace {

/// A workstation root of its own for the test program, set before anything uses one and removed at the end.
/// A child that the test program starts of itself keeps the root it is given.
class TemporaryRoot {
 public:
    TemporaryRoot() {
        if (std::getenv("RVL_TEST_CHILD") != nullptr) return;
        m_folder = (std::filesystem::temp_directory_path() / "rvl-test-XXXXXX").string();
        if (mkdtemp(m_folder.data()) == nullptr) std::abort();
        setenv("RVL_ROOT", m_folder.c_str(), 1);
    }

    ~TemporaryRoot() {
        std::error_code ignored;
        if (!m_folder.empty()) std::filesystem::remove_all(m_folder, ignored);
    }

    TemporaryRoot(const TemporaryRoot&) = delete;
    TemporaryRoot& operator=(const TemporaryRoot&) = delete;

 private:
    std::string m_folder;
};

const TemporaryRoot g_temporaryRoot;

}  // namespace

const Text kSomebody = "root";
const Text kProgramThatEnds = "/bin/false", kOtherProgramThatEnds = "/bin/true";

void ClaimWorkstation() {
    flock(open("/proc/self/exe", O_RDONLY | O_CLOEXEC), LOCK_EX);  // until the process ends
}

const std::string& Root() {
    static const std::string path = std::getenv("RVL_ROOT");
    return path;
}

std::string DriveC() {
    return Root() + "/drive_c";
}

void EmptyDriveC() {
    std::filesystem::remove_all(DriveC());
    std::filesystem::create_directory(DriveC());
}

std::filesystem::path HostFile(const Text& path) {
    return platform::HostPath(path);
}

int CodeOfNoDrive() {
    return 3;
}

void SetEnvironment(const char* name, const std::string& value) {
    setenv(name, value.c_str(), 1);
}

void UnsetEnvironment(const char* name) {
    unsetenv(name);
}

WithoutBrowser::WithoutBrowser() : m_kept(std::getenv("PATH")) {
    setenv("PATH", "/nonexistent", 1);
}

WithoutBrowser::~WithoutBrowser() {
    setenv("PATH", m_kept.c_str(), 1);
}

}  // namespace rvl::test
