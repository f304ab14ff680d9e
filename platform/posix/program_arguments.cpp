#include "platform/posix/program_arguments.h"

#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

/// The words of a command line as SetCommandLine writes them: quoted where they hold spaces or quotes, a
/// quote inside doubled.
std::vector<Text> SplitWords(TextView line) {
    std::vector<Text> words;
    for (std::size_t at = 0; at < line.size();) {
        if (line[at] == ' ') {
            ++at;
            continue;
        }
        Text& word = words.emplace_back();
        for (bool quoted = false; at < line.size() && (quoted || line[at] != ' '); ++at) {
            const bool doubled = quoted && line.substr(at, 2) == "\"\"";
            if (line[at] == '"' && !doubled)
                quoted = !quoted;
            else
                word += line[doubled ? at++ : at];
        }
    }
    return words;
}

}  // namespace

std::vector<std::string> ProgramArguments(TextView commandLine) {
    std::vector<std::string> arguments;
    for (const Text& word : SplitWords(commandLine))
        arguments.push_back(arguments.empty() ? HostPath(word) : Utf8FromText(word));
    return arguments;
}

}  // namespace rvl::platform
