#include "tools/deployserver/file_pieces.h"

#include "platform/error.h"
#include "util/message.h"

namespace rvl::deployserver {

void FilePieces::Open(const Text& path) {
    m_file.OpenFile(path, platform::FileAccess::Read, platform::FileShare::ReadWrite,
                    platform::FileDisposition::OpenExisting);
    m_fileSize = m_file.Length();
    m_message = MakeMessage(m_context, "FILE_DATA", "");
    m_headerSize = m_message.size();
    m_position = -1;
}

TextView FilePieces::MessageAt(std::int64_t position, std::size_t size) {
    if (position != m_position || m_message.size() != m_headerSize + size) Read(position, size);
    return m_message;
}

void FilePieces::Read(std::int64_t position, std::size_t size) {
    m_position = -1;
    m_message.resize(m_headerSize + size);
    m_file.SetPosition(position);
    for (std::size_t filled = 0; filled < size;) {
        const std::size_t read = m_file.ReadInto(m_message.data() + m_headerSize + filled, size - filled);
        if (read == 0) throw Error(kApplicationErrorBase + 1, "FilePieces", "The file has become shorter");
        filled += read;
    }
    m_position = position;
}

}  // namespace rvl::deployserver
