#pragma once

namespace rvl::platform {

/// Makes a top-level window of this process independent of its others: it can be used while they show modal
/// dialogs, and does not keep anybody from using them while it is modal itself. The window is the toolkit's
/// native handle.
void SeparateFromModalWindows(void* window);

}  // namespace rvl::platform
