#pragma once

namespace rvl {

/// Registers the service as a source of the system's event log.
void RegisterEventSource();

}  // namespace rvl
