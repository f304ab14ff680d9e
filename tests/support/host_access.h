#pragma once

#include <sys/stat.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/workstation.h"

namespace rvl::test {

/// The access list of a file as getfacl shows it, then its owner and group as stat does, on one line.
inline std::string AccessOf(const std::string& path) {
    const std::string command = "{ getfacl -cpE '" + path + "'; stat -c %U:%G '" + path + "'; } | xargs";
    FILE* output = popen(command.c_str(), "r");
    std::array<char, 1024> line{};
    const std::size_t size = fread(line.data(), 1, line.size(), output);
    pclose(output);
    return {line.data(), size > 0 ? size - 1 : 0};
}

/// True when the user's shell succeeds with a command in the folder; needs root.
inline bool CanRun(const std::string& user, const std::string& folder, const std::string& command) {
    chmod(Root().c_str(), 0711);
    const std::string shell = "runuser -u " + user + " -- sh -c '" + command + "' 2>/dev/null";
    return std::system(("cd '" + folder + "' && " + shell).c_str()) == 0;
}

}  // namespace rvl::test
