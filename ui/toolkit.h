#pragma once

namespace rvl {

/// Starts the window toolkit once; false when this process cannot show windows.
bool StartToolkit();

/// Runs the main loop of a process that is a window, until QuitWindows. Returns the exit code. Sockets,
/// timers and posted events live on the same loop.
int RunWindows();

/// Ends RunWindows, also one that has not begun yet, and every modal dialog that is open.
void QuitWindows();

}  // namespace rvl
