#include "session/advanced_tab.h"

#include "util/text_functions.h"

namespace rvl {

void AdvancedTab::SetServerConnected(bool connected) {
    m_serverConnected = connected;
    m_view.EnableAdvanced(connected);
    if (m_selected > 0 && IsShown()) LoadAdvanced(m_selected, true);
}

void AdvancedTab::FrontendChosen(std::int32_t frontendId) {
    LoadAdvanced(frontendId, false);
}

/// The history is asked for again: what changed while the other tab was showing has not been followed.
void AdvancedTab::TabChanged() {
    if (IsShown()) LoadAdvanced(m_selected, true);
}

void AdvancedTab::FrontendUpdated(std::int32_t frontendId) {
    if (frontendId == m_selected && IsShown()) LoadAdvanced(m_selected, true);
}

void AdvancedTab::LoadAdvanced(std::int32_t frontendId, bool force) {
    if (!m_serverConnected || (!force && frontendId == m_selected)) return;
    // All is settled before the request is sent, since that lets events run, even those that bring the
    // answer.
    if (frontendId != m_selected) m_selectedMissing = false;  // chosen from what is listed
    m_selected = frontendId;
    m_view.ShowHistory({});
    if (frontendId <= 0) return;
    m_view.SetBusyPointer(true);
    m_connection.SendData("PASS_THROUGH", {"FRONTEND_VERSION_HISTORY", NumberText(frontendId)});
}

void AdvancedTab::Empty() {
    m_selected = 0;
    m_selectedMissing = false;
    m_history.Clear();
    m_view.ShowHistory({});
    m_view.SetBusyPointer(false);
}

// The list of front ends. A front end that a new list does not hold has gone as one that is removed; the
// others keep their history, so that a deployment elsewhere does not disturb who is reading it.

void AdvancedTab::BeginList() {
    m_selectedMissing = m_selected > 0;
}

void AdvancedTab::FrontendListed(std::int32_t frontendId) {
    if (frontendId == m_selected) m_selectedMissing = false;
}

void AdvancedTab::EndList() {
    if (m_selectedMissing) Empty();
}

void AdvancedTab::FrontendRemoved(std::int32_t frontendId) {
    if (m_selected > 0 && frontendId == m_selected) Empty();
}

// The server's answer

void AdvancedTab::BeginHistory() {
    m_history.Clear();
}

void AdvancedTab::AddHistoryEntry(const std::vector<Text>& fields) {
    m_history.Add(fields);
}

/// The answer may be late: another front end may be selected by now, or none.
void AdvancedTab::EndHistory() {
    m_view.ShowHistory(m_history.RowsOf(m_selected));
    m_view.SetBusyPointer(false);
}

}  // namespace rvl
