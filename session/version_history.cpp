#include "session/version_history.h"

#include "session/release_date.h"
#include "util/text_functions.h"

namespace rvl {

ClientVerHistoryEntry::ClientVerHistoryEntry(const std::vector<Text>& fields)
    : frontendId(ParseLongOr(fields[0], 0)),
      versionId(ParseLongOr(fields[1], 0)),
      friendlyId(fields[2]),
      notes(fields[3]),
      hiddenText(fields[4]),
      dateReleased(ReleaseDateText(fields[5])),
      flag1(ParseLongOr(fields[6], 0)),
      flag2(ParseLongOr(fields[7], 0)),
      revoked(ParseLongOr(fields[8], 0)) {}

std::shared_ptr<VariantObject> ClientVerHistoryEntry::Clone() const {
    return std::make_shared<ClientVerHistoryEntry>(*this);
}

VersionHistoryRow ClientVerHistoryEntry::Row() const {
    return {friendlyId, dateReleased, notes, revoked != 0};
}

void VersionHistory::Add(const std::vector<Text>& fields) {
    m_entries.Add(std::make_shared<ClientVerHistoryEntry>(fields), true);
}

std::vector<VersionHistoryRow> VersionHistory::RowsOf(std::int32_t frontendId) const {
    std::vector<VersionHistoryRow> rows;
    for (std::int32_t i = 0; i < m_entries.Count(); ++i) {
        const auto& object = std::get<std::shared_ptr<VariantObject>>(m_entries.Item(i));
        const auto& entry = static_cast<const ClientVerHistoryEntry&>(*object);
        if (entry.frontendId == frontendId) rows.push_back(entry.Row());
    }
    return rows;
}

}  // namespace rvl
