#pragma once

#include <cstdint>
#include <vector>

#include "session/service_connection.h"
#include "session/switchboard_view.h"
#include "session/version_history.h"

namespace rvl {

/// The switchboard's second tab: the version history of the front end that is selected there. It comes from
/// the server and can be had only while that can be reached.
class AdvancedTab {
 public:
    AdvancedTab(ServiceConnection& connection, SwitchboardView& view)
        : m_connection(connection), m_view(view) {}

    void SetServerConnected(bool connected);
    void FrontendChosen(std::int32_t frontendId);
    void TabChanged();
    void FrontendUpdated(std::int32_t frontendId);

    // The list of front ends
    void BeginList();
    void FrontendListed(std::int32_t frontendId);
    void EndList();
    void FrontendRemoved(std::int32_t frontendId);

    // The server's answer
    void BeginHistory();
    void AddHistoryEntry(const std::vector<Text>& fields);
    void EndHistory();

 private:
    void LoadAdvanced(std::int32_t frontendId, bool force);
    void Empty();
    bool IsShown() const { return m_view.ShownTab() == SwitchboardView::Tab::Advanced; }

    ServiceConnection& m_connection;
    SwitchboardView& m_view;
    VersionHistory m_history;
    std::int32_t m_selected = 0;     ///< 0: none
    bool m_selectedMissing = false;  ///< not yet in the list that is coming in
    bool m_serverConnected = false;
};

}  // namespace rvl
