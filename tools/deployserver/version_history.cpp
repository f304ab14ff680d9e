#include "tools/deployserver/version_history.h"

#include <algorithm>

#include "util/dates.h"
#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kCommand = "FRONTEND_VERSION_HISTORY";

/// Between notes and date stands a text that nobody shows, behind the date two numbers likewise.
Text ParametersOf(const HistoryEntry& entry) {
    return JoinParameters({NumberText(entry.frontendId), NumberText(entry.versionId), entry.label,
                           entry.notes, "", entry.date, "0", "0", entry.revoked ? "1" : "0"});
}

}  // namespace

void VersionHistory::AddPublished(const FrontendVersion& version) {
    m_published.push_back({version.frontendId, version.versionId, version.label,
                           FormatDateTime(platform::LocalNow()), false, ""});
}

std::vector<HistoryEntry> VersionHistory::EntriesOf(std::int32_t frontendId) const {
    std::vector<HistoryEntry> entries;
    for (const auto* list : {&m_fromFile, &m_published})
        std::copy_if(list->begin(), list->end(), std::back_inserter(entries),
                     [&](const HistoryEntry& each) { return each.frontendId == frontendId; });
    std::stable_sort(entries.begin(), entries.end(),
                     [](const HistoryEntry& a, const HistoryEntry& b) { return a.versionId > b.versionId; });
    const auto twins =
        std::unique(entries.begin(), entries.end(),
                    [](const HistoryEntry& a, const HistoryEntry& b) { return a.versionId == b.versionId; });
    entries.erase(twins, entries.end());
    return entries;
}

bool VersionHistory::Answer(Workstation& workstation, const Message& message) const {
    if (message.command != kCommand) return false;
    const std::int32_t id = ParseLongOr(StripTerminator(message.params), 0);
    const auto entries = EntriesOf(id);
    workstation.PrintStep(kCommand + Text(" of frontend ") + NumberText(id) + ": " +
                          (entries.empty()
                               ? Text("nothing is known of it")
                               : NumberText(static_cast<std::int64_t>(entries.size())) + " versions"));
    const auto send = [&](const char* part, const Text& params) {
        workstation.Send(MakeMessage(message.context, Text(kCommand) + part, params));
    };
    send("_BEGIN", "");
    for (const HistoryEntry& entry : entries)
        send("_ENTRY", ParametersOf(entry));
    send("_END", "");
    return true;
}

}  // namespace rvl::deployserver
