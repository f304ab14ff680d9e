#pragma once

#include "runtime/timer.h"

namespace rvl {

/// Keeps the service's log file within bounds: looks once a minute whether half an hour has passed since the
/// last look at the log.
class Maintenance {
 public:
    Maintenance();

 private:
    void tmrMaintenance_Timer();
    void DoMaintenance();

    CTimer m_tmrMaintenance;
    std::uint64_t m_lastMaintenance = 0;  ///< tick; 0: none yet, so that the first tick finds it due
};

}  // namespace rvl
