#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// What an administrator can do about an error of the database; empty when there is nothing to say.
Text ExplainDatabaseError(std::int32_t number, TextView source);

}  // namespace rvl
