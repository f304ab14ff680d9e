#pragma once

#include "platform/text.h"

namespace rvl {

/// Path of the temporary new executable that a restarted service has to delete; empty when there is none.
Text GetTempBinaryPath();

}  // namespace rvl
