#pragma once

#include <sys/types.h>

#include "platform/service_manager.h"
#include "platform/service_process.h"

namespace rvl::platform {

/// The lock file of the one service of this workstation root, which tells who it is and how far it has come.
/// The system keeps the locks: they end with the process, however that ends.

ServiceStart ClaimServiceLock();                ///< the state is then StartPending
void AdvanceServiceLock(ServiceState reached);  ///< Running or StopPending; nothing without the claim
void ReleaseServiceLock();

struct ServiceHolder {
    ServiceState state = ServiceState::Stopped;
    pid_t process = 0;  ///< 0: nobody, or nobody whom this process can see
};

/// Raises an Error with number 5 for somebody who may not know.
ServiceHolder FindServiceHolder();

}  // namespace rvl::platform
