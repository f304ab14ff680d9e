#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// The descriptive text of a socket error number; empty for a number that is none.
TextView SocketErrorText(std::int32_t number);

}  // namespace rvl
