#pragma once

#include <cstdint>
#include <vector>

#include "util/message.h"

namespace rvl::deployserver {

/// One version that a workstation has, as a template or deployed to a user.
struct ReportRecord {
    std::int32_t frontendId = 0;
    std::int32_t versionId = 0;
    Text user;  ///< empty: the template
    std::int32_t fileCount = 0;
    std::int32_t present = 0;
};

/// "19 of 20 files"
Text FilesText(const ReportRecord& record);

/// "frontend 3 version 12 for OFFICE\ann 19 of 20 files"
Text Describe(const ReportRecord& record);

/// The newest report of a workstation about its front ends. It comes by itself after a login and again at any
/// later time; one that has not come to its end leaves the one before in place.
class WorkstationReport {
 public:
    static constexpr const char* kEnd = "CURRENT_FRONTENDS_END";

    /// Takes a message of a report; false for every other.
    bool Take(const Message& message);

    bool HasArrived() const { return m_arrived; }
    const std::vector<ReportRecord>& Records() const { return m_records; }

    /// Null when the version is not reported for the user, whose name is compared without regard to case.
    const ReportRecord* Find(std::int32_t versionId, TextView user) const;

 private:
    bool TakeRecord(TextView params);

    bool m_arrived = false;
    std::vector<ReportRecord> m_records;
    std::vector<ReportRecord> m_arriving;
};

}  // namespace rvl::deployserver
