#include "platform/win32/argument_text.h"

#include <algorithm>

namespace rvl::platform {
namespace {

/// The system's rule: up to the closing quote or, outside of quotes, to the first space.
std::size_t ProgramNameEnd(std::wstring_view commandLine) {
    bool quoted = false;
    for (std::size_t at = 0; at < commandLine.size(); ++at) {
        if (commandLine[at] == L'"')
            quoted = !quoted;
        else if (!quoted && (commandLine[at] == L' ' || commandLine[at] == L'\t'))
            return at;
    }
    return commandLine.size();
}

}  // namespace

Text ArgumentText(std::wstring_view commandLine) {
    commandLine.remove_prefix(ProgramNameEnd(commandLine));
    commandLine.remove_prefix(std::min(commandLine.find_first_not_of(L" \t"), commandLine.size()));
    Text text(commandLine.size(), '\0');
    std::transform(commandLine.begin(), commandLine.end(), text.begin(),
                   [](wchar_t character) { return character < 256 ? static_cast<char>(character) : '?'; });
    return text;
}

}  // namespace rvl::platform
