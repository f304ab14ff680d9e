#include "tools/deployserver/console.h"

#include <cstdio>

namespace rvl::deployserver {
namespace {

constexpr std::size_t kLongestLine = 1024;

bool IsControl(unsigned char code) {
    return code < 32 || (code >= 127 && code < 160);
}

/// What workstations send is shown within one line, whatever it holds.
Text Printable(TextView text) {
    constexpr TextView kDigits = "0123456789abcdef";
    Text printable;
    for (const char character : text.substr(0, kLongestLine)) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '\0')
            printable += '|';
        else if (IsControl(code))
            printable += Text("\\x") + kDigits[code >> 4] + kDigits[code & 15];
        else
            printable += character;
    }
    return text.size() > kLongestLine ? printable + " [...]" : printable;
}

}  // namespace

void Console::Step(TextView line) const {
    if (!m_quiet) Outcome(line);
}

void Console::Outcome(TextView line) const {
    const std::string utf8 = Utf8FromText(Printable(line)) + "\n";
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
    std::fflush(stdout);
}

}  // namespace rvl::deployserver
