#pragma once

namespace rvl {

/// The helper starts at every logon while the service is installed. An entry that starts an existing
/// executable as the helper is left as it is.
void ServiceControl_ServiceInstalled(bool newlyInstalled);

void ServiceControl_ServiceRemoved(bool removed);

}  // namespace rvl
