#include "runtime/spawn_process.h"

#include "platform/process.h"
#include "runtime/log_file.h"
#include "util/error_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

/// True when it has been started.
bool LogResult(const Text& commandLine, int error) {
    Log((error == 0 ? "Spawned " : "Error spawning ") + commandLine);
    if (error != 0) Log("    Error " + NumberText(error) + ": " + GetErrorString(error));
    return error == 0;
}

}  // namespace

bool SpawnProcess(const Text& commandLine) {
    std::uint32_t processId = 0;
    return LogResult(commandLine, platform::StartProcess(commandLine, processId));
}

std::unique_ptr<platform::StartedProcess> SpawnWatchedProcess(const Text& commandLine) {
    int error = 0;
    auto process = platform::StartedProcess::Start(commandLine, error);
    LogResult(commandLine, error);
    return process;
}

}  // namespace rvl
