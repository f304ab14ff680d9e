#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <string>

#include "tests/support/host_shell.h"
#include "tests/support/posix/workstation.h"

namespace rvl::test {

/// The access list of a file as getfacl shows it, then its owner and group as stat does, on one line.
inline std::string AccessOf(const std::string& path) {
    const std::string line =
        OutputOf("{ getfacl -cpE '" + path + "'; stat -c %U:%G '" + path + "'; } | xargs");
    return line.substr(0, line.find('\n'));
}

/// True when the user's shell succeeds with a command in the folder; needs root.
inline bool CanRun(const std::string& user, const std::string& folder, const std::string& command) {
    chmod(Root().c_str(), 0711);
    const std::string shell = "runuser -u " + user + " -- sh -c '" + command + "' 2>/dev/null";
    return std::system(("cd '" + folder + "' && " + shell).c_str()) == 0;
}

}  // namespace rvl::test
