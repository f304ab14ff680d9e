#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "session/switchboard_view.h"
#include "util/variant_vector.h"

namespace rvl {

/// What the server tells of one version of a front end; what is not shown is kept all the same.
struct ClientVerHistoryEntry : VariantObject {
    static constexpr std::size_t kFields = 9;

    explicit ClientVerHistoryEntry(const std::vector<Text>& fields);  ///< kFields of them
    std::shared_ptr<VariantObject> Clone() const override;
    VersionHistoryRow Row() const;

    std::int32_t frontendId;
    std::int32_t versionId;
    Text friendlyId;
    Text notes;
    Text hiddenText;
    Text dateReleased;  ///< as it is shown
    std::int32_t flag1, flag2;
    std::int32_t revoked;  ///< not 0: withdrawn
};

/// The entries of the server's last answer, in its order.
class VersionHistory {
 public:
    void Clear() { m_entries.Clear(); }
    void Add(const std::vector<Text>& fields);
    std::vector<VersionHistoryRow> RowsOf(std::int32_t frontendId) const;

 private:
    VariantVector m_entries;  ///< of ClientVerHistoryEntry
};

}  // namespace rvl
