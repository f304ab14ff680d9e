#pragma once

#include <string>

namespace rvl::test {

/// The temporary workstation root of this test process (RVL_ROOT), removed when it ends. Without trailing
/// slash.
const std::string& Root();

}  // namespace rvl::test
