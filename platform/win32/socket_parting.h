#pragma once

#include <winsock2.h>

namespace rvl::platform {

/// Closes a TCP socket; a connection only once the other end has closed it as well, or after some time: one
/// that is closed while more comes in is reset, and what the other end has not yet received of it is lost.
void PartFrom(SOCKET connection);

/// Closes those that still wait, at once.
void EndPartings();

}  // namespace rvl::platform
