#pragma once

#include <string>
#include <vector>

#include "platform/text.h"

namespace rvl::deployserver {

/// The words of an order: separated by spaces, in double quotes when they hold some ("" is one quote). Raises
/// WrongUsage for characters that no message can carry.
std::vector<Text> OrderWords(const std::string& utf8);

}  // namespace rvl::deployserver
