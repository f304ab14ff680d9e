#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl::deployserver {

/// A version of a front end as its history shows it.
struct HistoryEntry {
    std::int32_t frontendId = 0;
    std::int32_t versionId = 0;
    Text label;
    Text date;  ///< "yyyy-mm-dd" or "yyyy-mm-dd HH:MM:SS"
    bool revoked = false;
    Text notes;  ///< CR LF between lines
};

/// Reads a file (UTF-8) of one line per version, with tabs between front-end id, version id, version, date,
/// revoked (1 or 0) and notes, which may be missing and hold "\n" for a new line. Empty lines and those that
/// begin with
/// "#" are left out. Raises an Error that names the first line that makes no sense.
std::vector<HistoryEntry> ReadHistoryFile(const Text& path);

}  // namespace rvl::deployserver
