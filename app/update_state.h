#pragma once

#include "platform/text.h"

namespace rvl {

/// While an update is in progress, which outlives single processes.
bool IsUpdating();
void SetUpdating(bool updating);

/// The rights and the owner of a client executable: everybody runs it, administrators and the system replace
/// it.
void SetExecutablePermissions(const Text& path);

/// Path of the temporary new executable that a restarted service has to delete; empty when there is none.
Text GetTempBinaryPath();
void SetTempBinaryPath(const Text& path);  ///< empty: there is none any more

}  // namespace rvl
