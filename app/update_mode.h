#pragma once

#include "platform/text.h"

namespace rvl {

/// The update process, run from a new executable: replaces the service's executable, or waits until that is
/// done and starts a local process anew. The command line begins with the switch.
void RunUpdateMode(const Text& commandLine);

/// The guard of an update process, which it starts itself: does its work when it ends before its time.
void RunUpdateGuard(const Text& commandLine);

/// True once an update process works, or has worked, on this workstation.
bool IsUpdateProcessAtWork();

/// For local processes that are told of a new executable: starts the process that waits for the update and
/// then starts this one anew. True: the caller ends itself.
bool StartClientUpgradeWaitMode(const Text& newExecutable);

}  // namespace rvl
