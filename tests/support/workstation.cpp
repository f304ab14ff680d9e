#include "tests/support/workstation.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>

#include "platform/error.h"
#include "platform/event_loop.h"
#include "runtime/error_reporter.h"
#include "runtime/log_file.h"
#include "tests/support/child_process.h"
#include "tests/support/test_program.h"

namespace rvl::test {
namespace {

/// One error reporter per test process, as the program has it. A child shares the log of the process that has
/// started it.
class WorkstationEnvironment : public testing::Environment {
 public:
    void SetUp() override {
        InstallErrorSink(&m_reporter);
        if (ChildProcess::IsOne()) return;
        ClaimWorkstation();
        ClearLog();
    }

    void TearDown() override {
        InstallErrorSink(nullptr);
        if (!ChildProcess::IsOne()) ClearLog();
    }

 private:
    ErrorReporter m_reporter;
};

const testing::Environment* const g_environment =
    testing::AddGlobalTestEnvironment(new WorkstationEnvironment);

}  // namespace

std::string ReadHostFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteHostFile(const std::filesystem::path& path, std::string_view content) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::string LogContent() {
    return ReadHostFile(HostFile(LogPath()));
}

bool Logged(const Text& entry) {
    return LogContent().find("] " + entry + "\r\n") != std::string::npos;
}

void ClearLog() {
    std::filesystem::remove_all(HostFile(LogPath()));
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
