#include "tests/support/workstation.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/error.h"
#include "platform/event_loop.h"
#include "platform/posix/host_path.h"
#include "runtime/error_reporter.h"
#include "runtime/log_file.h"
#include "tests/temporary_root.h"

namespace rvl::test {
namespace {

/// A test program started by another one shares its root and its log.
bool IsChild() {
    return std::getenv("RVL_TEST_CHILD") != nullptr;
}

/// One root and one error reporter per test process, as the program has them. The tests of one program share
/// the log beside it: one process at a time has it, until it ends.
class WorkstationEnvironment : public testing::Environment {
 public:
    void SetUp() override {
        InstallErrorSink(&m_reporter);
        if (IsChild()) return;
        flock(open("/proc/self/exe", O_RDONLY | O_CLOEXEC), LOCK_EX);
        ClearLog();
    }

    void TearDown() override {
        InstallErrorSink(nullptr);
        if (!IsChild()) ClearLog();
    }

 private:
    ErrorReporter m_reporter;
};

const testing::Environment* const g_environment =
    testing::AddGlobalTestEnvironment(new WorkstationEnvironment);

}  // namespace

const std::string& Root() {
    static const std::string path = std::getenv("RVL_ROOT");  // set by tests/temporary_root.h
    return path;
}

std::string DriveC() {
    return Root() + "/drive_c";
}

void EmptyDriveC() {
    std::filesystem::remove_all(DriveC());
    std::filesystem::create_directory(DriveC());
}

std::string ReadHostFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteHostFile(const std::string& path, std::string_view content) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::string LogContent() {
    return ReadHostFile(platform::HostPath(LogPath()));
}

bool Logged(const Text& entry) {
    return LogContent().find("] " + entry + "\r\n") != std::string::npos;
}

void ClearLog() {
    std::filesystem::remove_all(platform::HostPath(LogPath()));
}

Text ErrorOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const Error& error) {
        return std::to_string(error.Number()) + " " + error.Source() + ": " + error.Description();
    }
    return "";
}

bool RunUntil(const std::function<bool()>& condition, int milliseconds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        platform::WaitForEvents(20);
    }
    return true;
}

}  // namespace rvl::test
