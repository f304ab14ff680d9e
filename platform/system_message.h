#pragma once

#include "platform/text.h"

namespace rvl::platform {

/// The system's message for a Win32 error code, at most 255 characters; empty when it has none.
Text SystemMessage(int code);

}  // namespace rvl::platform
