#pragma once

#include <string>
#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// A command line as the host starts it: the program's host path and its arguments in UTF-8. Words are
/// separated by spaces; double quotes keep spaces together, and two of them inside are one quote of the word.
std::vector<std::string> ProgramArguments(TextView commandLine);

}  // namespace rvl::platform
