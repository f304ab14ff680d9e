#include "app/update_mode.h"

#include "app/service_control.h"
#include "app/service_replacement.h"
#include "app/update_state.h"
#include "app/updated_service.h"
#include "platform/process.h"
#include "platform/process_claim.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/spawn_process.h"
#include "runtime/system_information.h"
#include "runtime/wait_ticks.h"
#include "util/command_words.h"
#include "util/handle_error.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr const char* kUpdateClaim = "update";  ///< held by the one update process
constexpr std::int64_t kWaitStep = 1000;
constexpr std::int32_t kMostTries = 3;  ///< of guards to do the work of those before them

Text DebugMarker() {
    return State().DebugMode ? "-debug" : "";
}

Text Quoted(const Text& path) {
    return "\"" + path + "\"";
}

/// The guard goes on when this process is killed. Its own guard has one try less, so that an executable that
/// cannot do it does not try for ever.
void StartGuard(const Text& target, std::int32_t tries) {
    SpawnProcess(Quoted(Self()) + " -update-guard" + DebugMarker() + " " + Quoted(target) + " " +
                 NumberText(tries));
}

/// Somebody may be looking just now whether it is held.
bool HoldUpdateClaim() {
    constexpr int kAttempts = 10;
    constexpr std::int64_t kStep = 100;
    for (int attempt = 1; attempt < kAttempts && !platform::HoldProcessClaim(kUpdateClaim); ++attempt)
        WaitTicks(kStep);
    return platform::HoldProcessClaim(kUpdateClaim);
}

void UpdateService(const Text& target, std::int32_t tries) {
    if (!HoldUpdateClaim()) return Log("Another update is at work");
    if (tries > 0) StartGuard(target, tries - 1);
    ServiceReplacement replacement(target);
    tries == kMostTries ? replacement.Run() : replacement.Resume();  // a guard has one try less
}

bool IsTimeToRespawn(const Text& target, std::uint64_t start) {
    constexpr std::int64_t kLongestWait = 120000;
    return !IsUpdating() || (CheckTickCountEx(start, kLongestWait) && FileExists(target));
}

/// "-service_helper" becomes "-service_helper-debug" in a debug run.
Text Respawned(const Text& words) {
    if (!State().DebugMode) return words;
    return Trim(FirstWord(words) + "-debug " + RestAfterFirstWord(words));
}

void RespawnAfterUpdate(const Text& target, const Text& words) {
    const std::uint64_t start = GetTickCountEx();
    Log("Waiting for update to complete before respawn");
    while (!IsTimeToRespawn(target, start))
        WaitTicks(kWaitStep);
    if (!FileExists(target)) Log("Original file doesn't exist, something went wrong");
    Log("Starting new executable");
    SpawnProcess(Quoted(target) + " " + Respawned(words));
}

/// False when the update is over, or when the service goes on as if there were none. One that is just about
/// to stop for it gets the time for that.
bool IsWorkLeft() {
    constexpr std::int64_t kPatience = 30000, kStep = 200;
    const std::uint64_t start = GetTickCountEx();
    while (IsUpdating() && !CheckTickCountEx(start, kPatience)) {
        const platform::ServiceState service = GetServiceStatus();
        if (service == platform::ServiceState::NotInstalled) return false;
        if (service == platform::ServiceState::Stopped) return true;
        WaitTicks(kStep);
    }
    return false;
}

/// The target of a command line whose first word is the switch; what follows is left in `rest`.
Text TakeTarget(const Text& commandLine, Text& rest) {
    const Text words = RestAfterFirstWord(commandLine);
    State().UpdateTargetPath = FirstWord(words);
    rest = RestAfterFirstWord(words);
    return State().UpdateTargetPath;
}

}  // namespace

void RunUpdateMode(const Text& commandLine) {
    State().DebugMode = FirstWord(commandLine) == "-update-mode-debug";
    Text rest;
    const Text target = TakeTarget(commandLine, rest);
    rest == "-service_mode" ? UpdateService(target, kMostTries) : RespawnAfterUpdate(target, rest);
}

void RunUpdateGuard(const Text& commandLine) {
    State().DebugMode = FirstWord(commandLine) == "-update-guard-debug";
    Text rest;
    const Text target = TakeTarget(commandLine, rest);
    while (IsUpdateProcessAtWork())
        WaitTicks(kWaitStep);
    if (!HoldUpdateClaim() || !IsWorkLeft()) return;
    Log("The update process has ended before its time, going on with its work");
    const std::int32_t tries = ParseLongOr(rest, 0);
    if (tries > 0)
        UpdateService(target, tries);
    else
        StartUpdatedService(target);  // whatever stands there
}

bool IsUpdateProcessAtWork() {
    return platform::IsProcessClaimHeld(kUpdateClaim);
}

bool StartClientUpgradeWaitMode(const Text& newExecutable) try {
    if (!FileExists(newExecutable)) {
        Log("Cannot read " + Quoted(newExecutable) + ", not updating");
        return false;
    }
    Log("Switching to wait mode until update complete");
    SpawnProcess(Quoted(newExecutable) + " -update-mode" + DebugMarker() + " " + Quoted(Self()) + " " +
                 platform::CommandLine());
    return true;
} catch (...) {
    HandleError("GlobalsClient.StartClientUpgradeWaitMode");
    return false;
}

}  // namespace rvl
