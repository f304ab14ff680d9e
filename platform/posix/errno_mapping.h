#pragma once

#include <string>

namespace rvl::platform {

/// The socket error number (10004...11031) of an errno value.
int SocketErrorFromErrno(int errnoValue);

/// The Win32 error code of an errno value of a file operation.
int Win32ErrorFromErrno(int errnoValue);

int Win32LastError();  ///< that of errno now

/// The Win32 error code of errno after a file could not be opened: below a missing folder it is the path that
/// is not found, as on Windows.
int Win32OpenError(const std::string& host);

}  // namespace rvl::platform
