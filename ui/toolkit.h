#pragma once

namespace rvl {

/// Starts the window toolkit once; false when this process cannot show windows.
bool StartToolkit();

}  // namespace rvl
