#pragma once

#include "platform/text.h"

namespace rvl {

/// Puts the values of environment variables in the places of their names: "%TEMP%\x". Unknown names and
/// single percent signs stay as they are; a value is not expanded again.
Text ExpandEnvironmentText(TextView text);

}  // namespace rvl
