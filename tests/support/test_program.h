#pragma once

namespace rvl::test {

/// Before the first test of a process that is no child of another one: makes sure that nobody's own
/// workstation is in danger, and that no other process uses the log of this test program.
void ClaimWorkstation();

}  // namespace rvl::test
