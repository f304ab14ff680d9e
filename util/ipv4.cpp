#include "util/ipv4.h"

#include <array>
#include <bit>
#include <charconv>
#include <vector>

#include "util/text_functions.h"

namespace rvl {
namespace {

using Bytes = std::array<std::uint8_t, 4>;  // as they lie in memory, so that no host byte order matters

/// A leading zero is refused: some read such a number as octal.
std::optional<std::uint8_t> ParseByte(TextView text) {
    if (text.size() > 1 && text[0] == '0') return std::nullopt;
    std::uint8_t byte = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, byte);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return byte;
}

}  // namespace

std::optional<std::uint32_t> ParseDotted(TextView text) {
    const std::vector<TextView> parts = SplitAt(text, ".");
    Bytes bytes{};
    if (parts.size() != bytes.size()) return std::nullopt;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::optional<std::uint8_t> byte = ParseByte(parts[i]);
        if (!byte) return std::nullopt;
        bytes[i] = *byte;
    }
    return std::bit_cast<std::uint32_t>(bytes);
}

Text DottedText(std::uint32_t networkOrder) {
    Text text;
    for (const std::uint8_t byte : std::bit_cast<Bytes>(networkOrder)) {
        if (!text.empty()) text += '.';
        text += std::to_string(byte);
    }
    return text;
}

}  // namespace rvl
