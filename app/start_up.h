#pragma once

namespace rvl {

/// The program after its entry point: writes the start lines, settles the process-wide state and enters
/// exactly one run mode. Returns the exit code.
int Main();

}  // namespace rvl
