#pragma once

#include "platform/text.h"

namespace rvl::platform {

/// The database property "AccessVersion" of a Microsoft Access database, such as "08.50"; the database is not
/// changed. Empty when it cannot be read.
Text DatabaseAccessVersion(const Text& path);

}  // namespace rvl::platform
