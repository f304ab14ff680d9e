#include "runtime/file.h"

#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr std::int32_t kFileError = kApplicationErrorBase + 1;

void Check(int code, const Text& operation) {
    if (code != 0) throw Error(kFileError, "File", operation + ": " + GetErrorString(code));
}

}  // namespace

void File::OpenFile(const Text& path, platform::FileAccess access, platform::FileShare share,
                    platform::FileDisposition disposition) {
    Check(m_handle.Open(path, access, share, disposition), "Cannot open \"" + path + "\"");
}

std::size_t File::ReadInto(char* buffer, std::size_t count) {
    if (count == 0) throw Error(kFileError, "File", "Must read more than zero bytes");
    std::size_t read = 0;
    Check(m_handle.Read(buffer, count, read), "ReadData");
    return read;
}

Text File::ReadData(std::int64_t count) {
    if (count <= 0) throw Error(kFileError, "File", "Must read more than zero bytes");
    Text bytes(static_cast<std::size_t>(count), '\0');
    std::size_t total = 0;
    while (total < bytes.size()) {
        const std::size_t read = ReadInto(bytes.data() + total, bytes.size() - total);
        if (read == 0) break;
        total += read;
    }
    bytes.resize(total);
    return bytes;
}

void File::WriteData(TextView bytes) {
    std::size_t written = 0;
    const int code = m_handle.Write(bytes.data(), bytes.size(), written);
    if (code == 0 && written == bytes.size()) return;
    const Text counts = "WriteData called with " + NumberText(static_cast<std::int64_t>(bytes.size())) +
                        " bytes.  Only " + NumberText(static_cast<std::int64_t>(written)) +
                        " bytes were written.";
    throw Error(kFileError, "File", code == 0 ? counts : counts + "  " + GetErrorString(code));
}

std::int64_t File::Position() {
    std::int64_t position = 0;
    Check(m_handle.Seek(0, platform::FileOrigin::Current, position), "Position");
    return position;
}

void File::SetPosition(std::int64_t offset, platform::FileOrigin origin) {
    std::int64_t position = 0;
    Check(m_handle.Seek(offset, origin, position), "SetPosition");
}

std::int64_t File::Length() const {
    std::int64_t bytes = 0;
    Check(m_handle.Length(bytes), "Length");
    return bytes;
}

}  // namespace rvl
