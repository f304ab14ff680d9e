#include "app/self_update.h"

#include <utility>

#include "app/service_control.h"
#include "app/update_mode.h"
#include "app/update_state.h"
#include "deploy/ntfs_permissions.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/spawn_process.h"
#include "runtime/system_information.h"
#include "runtime/wait_ticks.h"
#include "util/command_words.h"
#include "util/handle_error.h"
#include "util/scoped_state.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl {

void SelfUpdate::Accept(const Text& newExecutable) {
    SetExecutablePermissions(newExecutable);
    Log("Upgrade is available from \"" + Self() + "\" to \"" + newExecutable + "\"");
    m_pendingPath = newExecutable;
    SetUpdating(true);
    if (!MaybeUpgradeNow()) m_host.TellLocalProcesses(newExecutable);
}

void SelfUpdate::EndAbandonedUpdate() const {
    if (m_pendingPath.empty() && IsUpdating() && !IsUpdateProcessAtWork()) SetUpdating(false);
}

bool SelfUpdate::MaybeUpgradeNow() try {
    if (m_pendingPath.empty() || m_starting || !MayUpgradeNow()) return false;
    SetUpdating(true);
    const bool started = [this] {
        const ScopedFlag starting(m_starting);
        return StartUpdateProcess();
    }();
    m_pendingPath.clear();
    if (!started) {
        Log("Error starting update");
        SetUpdating(false);
        return false;
    }
    Log("Update executable started, stopping service.");
    m_host.StopForUpdate();
    return true;
} catch (...) {
    HandleError("frmClientService.MaybeUpgradeNow");
    return false;
}

bool SelfUpdate::MayUpgradeNow() const {
    const auto refuse = [](const Text& reason) {
        Log(reason);
        return false;
    };
    const int clients = m_host.ConnectedClients();
    if (clients > 0) return refuse("Still " + NumberText(clients) + " clients connected. Cannot update yet");
    Log("Everyone is disconnected. Beginning update");
    if (!State().ServiceMode) return refuse("Cannot perform update if not a service");
    if (!EqualsNoCase(FirstWord(ServicePath()), FirstWord(ServiceCommandLine())))
        return refuse("Cannot perform update if not active service");
    return true;
}

/// A new executable that does not even get to its work must not cost the service that runs.
bool SelfUpdate::StartUpdateProcess() const {
    constexpr std::int64_t kPatience = 10000, kStep = 100;
    const bool spawned =
        SpawnProcess("\"" + m_pendingPath + "\" -update-mode" + (State().DebugMode ? "-debug" : "") + " \"" +
                     Self() + "\" -service_mode");
    if (!spawned) return false;
    for (const std::uint64_t start = GetTickCountEx(); !CheckTickCountEx(start, kPatience); WaitTicks(kStep))
        if (IsUpdateProcessAtWork()) return true;
    return false;
}

}  // namespace rvl
