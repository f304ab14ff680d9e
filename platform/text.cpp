#include "platform/text.h"

#include "platform/error.h"

namespace rvl {
namespace {

constexpr char32_t kNarrowLimit = 256;

[[noreturn]] void RaiseDataLoss() {
    throw Error(kApplicationErrorBase + 1, "Util.WideToNarrow", "Conversion would cause data loss");
}

/// Reads one code point of at most two bytes: longer sequences are above 255 anyway.
char32_t NextCodePoint(std::string_view utf8, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(utf8[position++]);
    if (lead < 0x80) return lead;
    if ((lead & 0xE0) != 0xC0 || position == utf8.size()) RaiseDataLoss();
    const auto trail = static_cast<unsigned char>(utf8[position++]);
    if ((trail & 0xC0) != 0x80) RaiseDataLoss();
    const char32_t code = (static_cast<char32_t>(lead & 0x1F) << 6) | (trail & 0x3F);
    if (code < 0x80 || code >= kNarrowLimit) RaiseDataLoss();
    return code;
}

}  // namespace

Text WideToNarrow(std::u16string_view wide) {
    Text narrow;
    narrow.reserve(wide.size());
    for (const char16_t character : wide) {
        if (character >= kNarrowLimit) RaiseDataLoss();
        narrow.push_back(static_cast<char>(character));
    }
    return narrow;
}

std::u16string NarrowToWide(TextView narrow) {
    std::u16string wide;
    wide.reserve(narrow.size());
    for (const char character : narrow)
        wide.push_back(static_cast<unsigned char>(character));
    return wide;
}

Text TextFromUtf8(std::string_view utf8) {
    Text text;
    text.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();)
        text.push_back(static_cast<char>(NextCodePoint(utf8, position)));
    return text;
}

std::string Utf8FromText(TextView text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            utf8.push_back(character);
        } else {
            utf8.push_back(static_cast<char>(0xC0 | (code >> 6)));
            utf8.push_back(static_cast<char>(0x80 | (code & 0x3F)));
        }
    }
    return utf8;
}

}  // namespace rvl
