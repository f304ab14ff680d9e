#pragma once

#include "platform/text.h"

namespace rvl {

/// Starts the service again after its executable was replaced: through the service manager, or, in a debug
/// run and where another executable is the installed service, as an ordinary process. False when it did not
/// come up.
bool StartUpdatedService(const Text& target);

}  // namespace rvl
