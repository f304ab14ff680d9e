#pragma once

#include <functional>
#include <map>
#include <utility>

#include "runtime/timer.h"
#include "tools/deployserver/console.h"
#include "tools/deployserver/job.h"
#include "tools/deployserver/update_options.h"

namespace rvl::deployserver {

/// The workstations that were told to update themselves. They lose their link over it: what they were before
/// is kept here, by their uuid, until they log in again.
class AwaitedUpdates {
 public:
    /// `gaveUp` is called when the time limit of a workstation has passed.
    AwaitedUpdates(const UpdateOptions& options, const Console& console, std::function<void()> gaveUp)
        : m_console(console),
          m_timeoutSeconds(options.timeoutSeconds),
          m_version(options.version),
          m_gaveUp(std::move(gaveUp)) {}

    void Await(const Workstation& workstation);
    void Withdraw(const Workstation& workstation);

    /// True until the workstation is judged, also when it comes back later than anyone waits for it.
    bool IsToBeJudged(const Workstation& workstation) const;
    bool IsAnyAwaited() const;

    /// Prints whether a workstation that has come back is what it should be.
    bool Judge(Workstation& workstation);

    /// True when a workstation has what the update would make of it.
    bool IsUpToDate(const Workstation& workstation) const;

 private:
    struct Awaited {
        Awaited(Text before, std::function<void()> onTimeout)
            : versionBefore(std::move(before)), timer(std::move(onTimeout)) {}

        const Text versionBefore;
        CTimer timer;
    };

    void GiveUp(const Text& uuid, const Text& computer);

    const Console& m_console;
    const std::uint32_t m_timeoutSeconds;
    Text m_version;  ///< of the executable; empty: not known yet
    const std::function<void()> m_gaveUp;
    std::map<Text, Awaited> m_awaited;
};

}  // namespace rvl::deployserver
