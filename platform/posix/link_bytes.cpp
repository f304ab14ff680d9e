#include "platform/posix/link_bytes.h"

namespace rvl::platform {

void ByteWriter::Number(std::uint64_t value, int bytes) {
    for (; bytes > 0; --bytes, value >>= 8)
        m_bytes.push_back(static_cast<char>(value & 0xFF));
}

void ByteWriter::Wide(TextView text) {
    for (const char16_t character : NarrowToWide(text))
        U16(character);
}

std::string_view ByteReader::Raw(std::size_t count) {
    if (count > m_bytes.size() - m_position) {
        m_failed = true;
        return {};
    }
    m_position += count;
    return m_bytes.substr(m_position - count, count);
}

std::uint64_t ByteReader::Number(std::size_t bytes) {
    const std::string_view raw = Raw(bytes);
    std::uint64_t value = 0;
    for (std::size_t at = raw.size(); at > 0; --at)
        value = value << 8 | static_cast<unsigned char>(raw[at - 1]);
    return value;
}

Text ByteReader::Wide(std::size_t characters) {
    ByteReader block(Raw(characters * 2));
    std::u16string wide;
    for (; characters > 0 && !m_failed; --characters) {
        const char16_t character = block.U16();
        if (character == 0) break;
        wide.push_back(character);
    }
    return WideToNarrow(wide);
}

Text ByteReader::NarrowAt(std::size_t offset) {
    const std::size_t end = m_bytes.find('\0', offset);
    if (end != std::string_view::npos) return Text(m_bytes.substr(offset, end - offset));
    m_failed = true;
    return {};
}

Text ByteReader::WideAt(std::size_t offset) {
    for (std::size_t end = offset; end < m_bytes.size() && m_bytes.size() - end >= 2; end += 2)
        if (m_bytes[end] == 0 && m_bytes[end + 1] == 0)
            return ByteReader(m_bytes.substr(offset)).Wide((end - offset) / 2);
    m_failed = true;
    return {};
}

}  // namespace rvl::platform
