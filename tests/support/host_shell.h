#pragma once

#include <string>

namespace rvl::test {

/// What a command of the host's shell writes on both its outputs; the folder to run it in is a host path.
/// Under Wine the host is the Linux outside; on a machine without such a shell the output is empty.
std::string OutputOf(const std::string& command, const std::string& folder = "");

}  // namespace rvl::test
