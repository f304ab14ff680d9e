#pragma once

namespace rvl {

/// START_HELPER: starts this program again as the user's helper, also in a debug run without the debug
/// marker.
void StartHelperForService();

}  // namespace rvl
