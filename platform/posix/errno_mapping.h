#pragma once

namespace rvl::platform {

/// The socket error number (10004...11031) of an errno value.
int SocketErrorFromErrno(int errnoValue);

/// The Win32 error code of an errno value of a file operation.
int Win32ErrorFromErrno(int errnoValue);

}  // namespace rvl::platform
