#include "runtime/file_digest.h"

#include <array>

#include "runtime/file.h"
#include "util/digest.h"
#include "util/handle_error.h"

namespace rvl {

Text MD5SumOfFile(const Text& path) try {
    std::array<char, 4096> piece;
    File file;
    file.OpenFile(path, platform::FileAccess::Read, platform::FileShare::ReadWrite,
                  platform::FileDisposition::OpenExisting);
    MessageDigest digest;
    while (const std::size_t read = file.ReadInto(piece.data(), piece.size()))
        digest.AddBytes(piece.data(), read);
    digest.Finish();
    return digest.AsHex();
} catch (...) {
    HandleError("Util.MD5SumOfFile");
    return "";
}

}  // namespace rvl
