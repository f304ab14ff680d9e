#include "app/service_replacement.h"

#include "app/service_control.h"
#include "app/update_state.h"
#include "app/updated_service.h"
#include "platform/files.h"
#include "runtime/file_digest.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "runtime/system_information.h"
#include "runtime/wait_ticks.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

constexpr std::int64_t kLongestWait = 60000;
constexpr std::int64_t kWaitStep = 1000;
constexpr std::int64_t kLongestHold = 10000;

// Beside the target while it is replaced: the new program until it is whole, the old one until the new one
// runs.
constexpr TextView kNew = ".new";
constexpr TextView kPrevious = ".previous";

bool IsServiceThere() {
    const platform::ServiceState state = GetServiceStatus();
    return state != platform::ServiceState::Stopped && state != platform::ServiceState::NotInstalled;
}

/// Held by whoever starts the program just now, or by a scanner that looks through it.
bool IsHeldBySomebody(int code) {
    constexpr int kAccessDenied = 5, kSharingViolation = 32, kLockViolation = 33;
    return code == kAccessDenied || code == kSharingViolation || code == kLockViolation;
}

/// Some tries, since the wait for the end of all old programs may have ended before somebody started another.
int MoveIntoPlace(const Text& source, const Text& target) {
    const std::uint64_t start = GetTickCountEx();
    for (;;) {
        const int code = platform::MoveFileTo(source, target);
        if (!IsHeldBySomebody(code) || CheckTickCountEx(start, kLongestHold)) return code;
        WaitTicks(kWaitStep);
    }
}

}  // namespace

void ServiceReplacement::Run() {
    Log("Waiting for all \"" + m_target + "\" to terminate");
    if (!WaitForTarget()) {
        Log("Giving up waiting for \"" + m_target + "\" to be deletable");
        SetUpdating(false);
        StartUpdatedService(m_target);
        return RemoveLeftovers();
    }
    Log("Copying new version over");
    CopyOver();
    Finish();
}

/// Once the copy is made there is nothing to wait for: who runs the target may be the new service, which the
/// killed process had just started.
void ServiceReplacement::Resume() {
    IsInPlace() ? Finish() : Run();
}

void ServiceReplacement::Finish() {
    if (StartUpdatedService(m_target) || GoBack()) return RemoveLeftovers();
    SetUpdating(false);  // nobody else is there to say that the update is over
}

void ServiceReplacement::RemoveLeftovers() const {
    for (const TextView suffix : {kNew, kPrevious})
        platform::DeleteFileAt(Beside(suffix));
}

/// The service counts as well as its executable: it may run one that was replaced under it by other means.
bool ServiceReplacement::WaitForTarget() const {
    const std::uint64_t start = GetTickCountEx();
    while (platform::IsRunningProgram(m_target) || IsServiceThere()) {
        if (CheckTickCountEx(start, kLongestWait)) return false;
        WaitTicks(kWaitStep);
    }
    return true;
}

/// An update process that was killed after the copy leaves the rest to the one that follows.
bool ServiceReplacement::IsInPlace() const {
    return FileExists(m_target) && MD5SumOfFile(m_target) == MD5SumOfFile(Self());
}

/// Whatever goes wrong here, the service must be started afterwards.
void ServiceReplacement::CopyOver() try {
    if (IsInPlace()) return;
    const int code = Replace();
    if (code == 0) return SetExecutablePermissions(m_target);
    platform::DeleteFileAt(Beside(kNew));
    Log("Error copying \"" + Self() + "\" to \"" + m_target + "\"");
    Log("    Error " + NumberText(code) + ": " + GetErrorString(code));
    SetExecutablePermissions(m_target);
} catch (...) {
    HandleError("Globals.UpdateService");
}

/// The target is never deleted first: the move puts one whole program in the place of the other.
int ServiceReplacement::Replace() const {
    if (const int code = platform::CopyFileTo(Self(), Beside(kNew)); code != 0) return code;
    if (FileExists(m_target))
        if (const int code = platform::CopyFileTo(m_target, Beside(kPrevious)); code != 0) return code;
    return MoveIntoPlace(Beside(kNew), m_target);
}

/// The previous version stays beside the target for as long as it may still be needed.
bool ServiceReplacement::GoBack() const {
    if (!FileExists(Beside(kPrevious))) return false;
    Log("The new version does not start, going back to the previous one");
    WaitForTarget();
    if (const int code = MoveIntoPlace(Beside(kPrevious), m_target); code != 0) {
        Log("    Error " + NumberText(code) + ": " + GetErrorString(code));
        return false;
    }
    SetExecutablePermissions(m_target);
    return StartUpdatedService(m_target);
}

}  // namespace rvl
