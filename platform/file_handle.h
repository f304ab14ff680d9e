#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/text.h"

namespace rvl::platform {

enum class FileAccess {
    Read = 1,
    Write = 2,
    ReadWrite = 3,
    Append = 4,  ///< every write goes whole to the end, whoever else appends
};
enum class FileShare { None = 0, Read = 1, Write = 2, ReadWrite = 3 };
enum class FileDisposition { CreateNew = 1, CreateAlways = 2, OpenExisting = 3, OpenAlways = 4 };
enum class FileOrigin { Begin = 0, Current = 1, End = 2 };

/// An open binary file; closes itself. Operations return 0 or a Win32 error code.
class FileHandle {
 public:
    FileHandle() = default;
    ~FileHandle();
    FileHandle(FileHandle&& other) noexcept;
    FileHandle& operator=(FileHandle&& other) noexcept;
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    int Open(const Text& path, FileAccess access, FileShare share, FileDisposition disposition);
    int Read(char* buffer, std::size_t size, std::size_t& read);  ///< 0 bytes read at the end
    int Write(const char* data, std::size_t size, std::size_t& written);
    int Seek(std::int64_t offset, FileOrigin origin, std::int64_t& position);
    int Length(std::int64_t& bytes) const;
    void Close();
    bool IsOpen() const { return m_handle != -1; }

 private:
    std::intptr_t m_handle = -1;
};

}  // namespace rvl::platform
