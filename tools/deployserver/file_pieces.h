#pragma once

#include <cstdint>
#include <utility>

#include "runtime/file.h"

namespace rvl::deployserver {

/// The pieces of a local file as FILE_DATA messages, read when they are asked for: one of them is in memory
/// at a time, whatever the size of the file.
class FilePieces {
 public:
    explicit FilePieces(Text context) : m_context(std::move(context)) {}

    void Open(const Text& path);  ///< raises an Error when the file cannot be read
    std::int64_t FileSize() const { return m_fileSize; }

    /// The whole message with the piece at this position; asking twice reads once. A file that has become
    /// shorter raises an Error.
    TextView MessageAt(std::int64_t position, std::size_t size);

 private:
    void Read(std::int64_t position, std::size_t size);

    Text m_context;
    File m_file;
    std::int64_t m_fileSize = 0;
    Text m_message;
    std::size_t m_headerSize = 0;
    std::int64_t m_position = -1;  ///< of the piece in m_message
};

}  // namespace rvl::deployserver
