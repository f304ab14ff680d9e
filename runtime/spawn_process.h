#pragma once

#include <memory>

#include "platform/started_process.h"
#include "platform/text.h"

namespace rvl {

/// Starts a process with a whole command line, the quoted program first; it lives on when this one ends.
/// False, with log lines, when the system refuses.
bool SpawnProcess(const Text& commandLine);

/// The same, to be watched; null when the system refuses.
std::unique_ptr<platform::StartedProcess> SpawnWatchedProcess(const Text& commandLine);

}  // namespace rvl
