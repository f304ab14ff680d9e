#pragma once

namespace rvl::platform {

/// Lower case of an ISO 8859-1 character: how names are compared.
inline unsigned char LowerLatin1(char character) {
    const auto code = static_cast<unsigned char>(character);
    const bool upper = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7);
    return upper ? static_cast<unsigned char>(code + 32) : code;
}

}  // namespace rvl::platform
