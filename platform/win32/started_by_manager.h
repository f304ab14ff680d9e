#pragma once

namespace rvl::platform {

/// False when certainly not the service manager has started this process.
bool MayBeStartedByServiceManager();

}  // namespace rvl::platform
