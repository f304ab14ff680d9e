#include "tests/support/host_shell.h"

#include <cstdio>
#include <memory>

namespace rvl::test {

std::string OutputOf(const std::string& command, const std::string& folder) {
    const std::string go = folder.empty() ? "" : "cd '" + folder + "' && ",
                      line = go + "{ " + command + "\n} 2>&1";
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(line.c_str(), "r"), pclose);
    std::string content;
    for (int character = 0; output && (character = std::fgetc(output.get())) != EOF;)
        content += static_cast<char>(character);
    return content;
}

}  // namespace rvl::test
