#pragma once

#include "platform/text.h"

namespace rvl::platform {

/// What a screen reader calls a control that has no label of its own. The control is the toolkit's native
/// handle.
void SetAccessibleName(void* control, const Text& name);

}  // namespace rvl::platform
