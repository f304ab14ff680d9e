#include "tools/deployserver/awaited_updates.h"

#include <algorithm>

namespace rvl::deployserver {

void AwaitedUpdates::Await(const Workstation& workstation) {
    constexpr std::uint32_t kMilliseconds = 1000;
    const Login& login = workstation.LoginData();
    const auto onTimeout = [this, uuid = login.uuid, computer = login.computer] { GiveUp(uuid, computer); };
    m_awaited.erase(login.uuid);
    CTimer& timer = m_awaited.try_emplace(login.uuid, workstation.Version(), onTimeout).first->second.timer;
    timer.SetInterval(m_timeoutSeconds * kMilliseconds);
    timer.SetEnabled(true);
}

void AwaitedUpdates::Withdraw(const Workstation& workstation) {
    m_awaited.erase(workstation.LoginData().uuid);
}

bool AwaitedUpdates::IsToBeJudged(const Workstation& workstation) const {
    return m_awaited.contains(workstation.LoginData().uuid);
}

bool AwaitedUpdates::IsAnyAwaited() const {
    return std::any_of(m_awaited.begin(), m_awaited.end(),
                       [](const auto& each) { return each.second.timer.Enabled(); });
}

void AwaitedUpdates::GiveUp(const Text& uuid, const Text& computer) {
    m_awaited.at(uuid).timer.SetEnabled(false);
    m_console.Outcome("NOT UPDATED " + computer + ", did not come back");
    m_gaveUp();
}

/// Without a version that was asked for, the first workstation with another one than before tells what the
/// executable is: those that log in with it later need no update.
bool AwaitedUpdates::Judge(Workstation& workstation) {
    const Text& computer = workstation.LoginData().computer;
    const Text& version = workstation.Version();
    const Text before = m_awaited.at(workstation.LoginData().uuid).versionBefore;
    Withdraw(workstation);
    if (version == before) {
        workstation.PrintOutcome("NOT UPDATED " + computer + ", still " + before);
        return false;
    }
    if (!m_version.empty() && version != m_version) {
        workstation.PrintOutcome("NOT UPDATED " + computer + " to " + m_version + ", came back with " +
                                 version);
        return false;
    }
    m_version = version;
    workstation.PrintOutcome("UPDATED " + computer + " from " + before + " to " + version);
    return true;
}

bool AwaitedUpdates::IsUpToDate(const Workstation& workstation) const {
    return !m_version.empty() && workstation.Version() == m_version;
}

}  // namespace rvl::deployserver
