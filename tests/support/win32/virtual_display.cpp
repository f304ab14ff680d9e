#include "tests/support/virtual_display.h"

namespace rvl::test {

VirtualDisplay::VirtualDisplay() = default;

void VirtualDisplay::End() {}

}  // namespace rvl::test
