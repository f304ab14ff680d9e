#pragma once

#include <cstdint>

#include "platform/file_handle.h"
#include "platform/text.h"

namespace rvl {

/// A binary file on a platform handle. Failures raise the application error base + 1 with a text of the
/// operation and the system's message.
class File {
 public:
    void OpenFile(const Text& path, platform::FileAccess access, platform::FileShare share,
                  platform::FileDisposition disposition);
    void Close() { m_handle.Close(); }

    /// At most `count` bytes; fewer at the end of the file. A count of 0 or less is an error.
    Text ReadData(std::int64_t count);
    /// The same into a buffer of at least `count` bytes; returns how many were read.
    std::size_t ReadInto(char* buffer, std::size_t count);
    void WriteData(TextView bytes);

    std::int64_t Position();
    void SetPosition(std::int64_t offset, platform::FileOrigin origin = platform::FileOrigin::Begin);
    std::int64_t Length() const;
    bool IsEOF() { return Position() >= Length(); }

 private:
    platform::FileHandle m_handle;
};

}  // namespace rvl
