#pragma once

#include <cstdint>
#include <vector>

#include "tools/msaccess/order.h"

namespace rvl::msaccess {

// What the system of this desktop does its own way.

/// Shows the main window of a database (a full path, empty for none), which does what it is told, until it is
/// closed or told to end. Returns the exit code.
int RunMainWindow(const Text& database, const std::vector<Order>& orders);

/// Tells a running stand-in, by its main window, what to do; false when it does not take it.
bool SendOrder(std::uint32_t mainWindow, const Text& order);

}  // namespace rvl::msaccess
