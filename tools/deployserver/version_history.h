#pragma once

#include "tools/deployserver/frontend_version.h"
#include "tools/deployserver/history_file.h"
#include "tools/deployserver/job.h"

namespace rvl::deployserver {

/// The versions that front ends have had: what a file says, and what is published.
class VersionHistory {
 public:
    /// Reads the file anew; raises an Error and keeps what it said before when it makes no sense.
    void Read(const Text& path) { m_fromFile = ReadHistoryFile(path); }

    /// Adds a version that is published from now on. Where the file has it too, the file is right.
    void AddPublished(const FrontendVersion& version);

    bool Knows(std::int32_t frontendId) const { return !EntriesOf(frontendId).empty(); }

    /// Answers a switchboard that asks for the history of a front end; false for any other message.
    bool Answer(Workstation& workstation, const Message& message) const;

 private:
    std::vector<HistoryEntry> EntriesOf(std::int32_t frontendId) const;  ///< newest first

    std::vector<HistoryEntry> m_fromFile;
    std::vector<HistoryEntry> m_published;
};

}  // namespace rvl::deployserver
