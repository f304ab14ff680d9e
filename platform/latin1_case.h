#pragma once

#include "platform/text.h"

namespace rvl {

/// The lower-case form of a character; only ISO 8859-1 itself counts, so "ß" and "ÿ" have no upper case.
constexpr char LowerLatin1(char character) {
    const auto code = static_cast<unsigned char>(character);
    const bool upper = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7);
    return upper ? static_cast<char>(code + 0x20) : character;
}

inline Text LowerLatin1(TextView text) {
    Text lower(text);
    for (char& character : lower)
        character = LowerLatin1(character);
    return lower;
}

}  // namespace rvl
