#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace rvl::platform {

/// Appends little-endian numbers and texts to a block of bytes.
class ByteWriter {
 public:
    void U8(std::uint8_t value) { Number(value, 1); }
    void U16(std::uint16_t value) { Number(value, 2); }
    void U32(std::uint32_t value) { Number(value, 4); }
    void U64(std::uint64_t value) { Number(value, 8); }
    void Raw(std::string_view bytes) { m_bytes += bytes; }
    void Zeros(std::size_t count) { m_bytes.append(count, '\0'); }
    void Wide(TextView text);  ///< UTF-16, without NUL
    void PadToEven() { Zeros(m_bytes.size() % 2); }

    std::uint32_t Size() const { return static_cast<std::uint32_t>(m_bytes.size()); }
    const std::string& Bytes() const { return m_bytes; }

 private:
    void Number(std::uint64_t value, int bytes);

    std::string m_bytes;
};

/// Reads them back. What lies outside the block reads as zero or empty and marks the reader as failed.
class ByteReader {
 public:
    explicit ByteReader(std::string_view bytes) : m_bytes(bytes) {}

    std::uint16_t U16() { return static_cast<std::uint16_t>(Number(2)); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Number(4)); }
    std::string_view Raw(std::size_t count);
    Text Wide(std::size_t characters);  ///< as WideToNarrow, cut at the first NUL

    /// Texts at an offset of the whole block, up to their NUL.
    Text NarrowAt(std::size_t offset);
    Text WideAt(std::size_t offset);

    std::string_view Rest() const { return m_bytes.substr(m_position); }
    bool Failed() const { return m_failed; }

 private:
    std::uint64_t Number(std::size_t bytes);

    std::string_view m_bytes;
    std::size_t m_position = 0;
    bool m_failed = false;
};

}  // namespace rvl::platform
