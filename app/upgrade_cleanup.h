#pragma once

namespace rvl {

/// Deletes the temporary executable that an update came with and takes its log over into this one. One that
/// is still running stays until the next call.
void UpgradeCleanup();

}  // namespace rvl
