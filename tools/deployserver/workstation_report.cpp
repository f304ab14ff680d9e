#include "tools/deployserver/workstation_report.h"

#include <algorithm>
#include <utility>

#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl::deployserver {

Text FilesText(const ReportRecord& record) {
    return NumberText(record.present) + " of " + NumberText(record.fileCount) + " files";
}

Text Describe(const ReportRecord& record) {
    return "frontend " + NumberText(record.frontendId) + " version " + NumberText(record.versionId) +
           (record.user.empty() ? " template " : " for " + record.user + " ") + FilesText(record);
}

bool WorkstationReport::Take(const Message& message) {
    if (!message.context.empty()) return false;
    if (message.command == "CURRENT_FRONTEND") return TakeRecord(message.params);
    if (message.command == "CURRENT_FRONTENDS_BEGIN") {
        m_arriving.clear();
        return true;
    }
    if (message.command != kEnd) return false;
    m_records = std::exchange(m_arriving, {});
    m_arrived = true;
    return true;
}

bool WorkstationReport::TakeRecord(TextView params) {
    constexpr std::size_t kParameters = 5;
    const auto list = SplitParameters(params);
    if (list.size() < kParameters) return false;
    m_arriving.push_back({ParseLongOr(list[0], 0), ParseLongOr(list[1], 0), list[2], ParseLongOr(list[3], 0),
                          ParseLongOr(list[4], 0)});
    return true;
}

const ReportRecord* WorkstationReport::Find(std::int32_t versionId, TextView user) const {
    const auto found = std::find_if(m_records.begin(), m_records.end(), [&](const ReportRecord& record) {
        return record.versionId == versionId && EqualsNoCase(record.user, user);
    });
    return found == m_records.end() ? nullptr : &*found;
}

}  // namespace rvl::deployserver
