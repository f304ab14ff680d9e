#include "platform/sqlite.h"
#include "platform/win32/long_path.h"
#include "platform/win32/utf8.h"

namespace rvl::platform {

/// Only what begins like this is a file of a drive or share; SQLite takes an empty name for a database that
/// vanishes, and the caller looks for one.
std::string SqliteFileName(const Text& path) {
    const std::wstring name = LongPath(path);
    return name.starts_with(L"\\\\?\\") ? Utf8(name) : std::string();
}

}  // namespace rvl::platform
