#include "app/updated_service.h"

#include "app/service_control.h"
#include "app/update_state.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/spawn_process.h"
#include "runtime/system_information.h"
#include "runtime/wait_ticks.h"
#include "util/command_words.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {
namespace {

/// A service that is still ending would be taken for the one that is to start.
void WaitForEndOfService() {
    constexpr std::int64_t kPatience = 60000, kStep = 200;
    const std::uint64_t start = GetTickCountEx();
    while (GetServiceStatus() == platform::ServiceState::StopPending && !CheckTickCountEx(start, kPatience))
        WaitTicks(kStep);
}

bool StartInstalledService() {
    Log("Starting service");
    WaitForEndOfService();
    SetTempBinaryPath(Self());
    const int result = StartService();
    if (result == 0)
        Log("Service started");
    else
        Log("Unable to start service: Error " + NumberText(result) + ": " + GetErrorString(result));
    // Somebody else may have started it meanwhile.
    return result == 0 || (result == platform::kServiceAlreadyRunning &&
                           GetServiceStatus() == platform::ServiceState::Running);
}

}  // namespace

bool StartUpdatedService(const Text& target) try {
    const bool mismatch = !EqualsNoCase(FirstWord(ServicePath()), target);
    if (!State().DebugMode && !mismatch) return StartInstalledService();
    if (mismatch) Log("Warning: not starting service in live mode as it is not installed correctly");
    Log("Starting up new version");
    return SpawnProcess("\"" + target + "\" -service_mode-after-update" +
                        (State().DebugMode ? "-debug" : "") + " \"" + Self() + "\"");
} catch (...) {
    HandleError("Globals.StartUpdatedService");
    return false;
}

}  // namespace rvl
