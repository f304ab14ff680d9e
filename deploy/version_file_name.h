#pragma once

#include "platform/text.h"

namespace rvl {

/// True when a name that the server gives a file of a version, or a shortcut, stays inside the folder that it
/// is meant for: no drive and no step "..", however it is written.
bool StaysInFolder(TextView name);

}  // namespace rvl
