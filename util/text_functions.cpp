#include "util/text_functions.h"

#include <algorithm>
#include <cstdio>

#include "platform/latin1_case.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

unsigned char Code(char character) {
    return static_cast<unsigned char>(character);
}

char UpperCharacter(char character) {
    const unsigned char code = Code(character);
    const bool lower = (code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE && code != 0xF7);
    return lower ? static_cast<char>(code - 0x20) : character;
}

bool IsNonPrintable(char character) {
    const unsigned char code = Code(character);
    const bool allowed = code == '\0' || code == '\r' || code == '\n';
    return !allowed && (code < 32 || code >= 127);
}

}  // namespace

Text LowerCase(TextView text) {
    return LowerLatin1(text);
}

Text UpperCase(TextView text) {
    Text result(text);
    std::transform(result.begin(), result.end(), result.begin(), UpperCharacter);
    return result;
}

TextView TrimView(TextView text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == TextView::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

Text Trim(TextView text) {
    return Text(TrimView(text));
}

int CompareNoCase(TextView a, TextView b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const unsigned char left = Code(LowerLatin1(a[i]));
        const unsigned char right = Code(LowerLatin1(b[i]));
        if (left != right) return left < right ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

bool EqualsNoCase(TextView a, TextView b) {
    return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

Text HexString(std::int32_t value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%08X", static_cast<unsigned>(value));
    return buffer;
}

Text HexDumpString(TextView text) try {
    constexpr TextView kDigits = "0123456789ABCDEF";
    Text dump;
    dump.reserve(text.size() * 6);
    for (const char character : text) {
        if (!dump.empty()) dump += ' ';
        dump += kDigits[Code(character) >> 4];
        dump += kDigits[Code(character) & 15];
        dump += " 00";  // no character is above 255
    }
    return dump;
} catch (...) {
    HandleErrorAndReRaise("Util.HexDumpString");
}

bool ContainsNonPrintableCharacters(TextView text) {
    return std::any_of(text.begin(), text.end(), IsNonPrintable);
}

Text StripTerminator(TextView text) {
    return Text(text.substr(0, text.find('\0')));
}

Text MMSS(std::int32_t seconds) {
    const std::int32_t total = std::max(seconds, 0);
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d:%02d", total / 60, total % 60);
    return buffer;
}

std::vector<TextView> SplitAt(TextView text, TextView separator) {
    std::vector<TextView> pieces;
    std::size_t start = 0;
    if (separator.size() == 1) {
        for (std::size_t end; (end = text.find(separator[0], start)) != TextView::npos; start = end + 1)
            pieces.push_back(text.substr(start, end - start));
    }
    pieces.push_back(text.substr(start));
    return pieces;
}

}  // namespace rvl
