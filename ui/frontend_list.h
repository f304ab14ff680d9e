#pragma once

#include <wx/listctrl.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "session/switchboard_view.h"
#include "ui/once_later.h"

namespace rvl {

/// A list of front ends, which asks for the contents of the rows on the screen only: a thousand of them cost
/// no more than ten. A batch of changes is shown at once; the selection outlives a list that is sent again.
class FrontendList : public wxListView {
 public:
    using FrontendEvent = std::function<void(std::int32_t frontendId, const Text& name)>;

    void Clear();
    void Add(const FrontendItem& item);  ///< replaces the one with the same id
    void Remove(std::int32_t frontendId);

    /// Makes the columns as wide as their contents. A hidden list is not measured: whoever brings it on the
    /// screen calls this.
    void FitColumns();

    void OnActivated(FrontendEvent event) { m_activated = std::move(event); }
    void OnSelected(FrontendEvent event) { m_selected = std::move(event); }
    void OnUpdated(std::function<void()> event) { m_updated = std::move(event); }  ///< after a batch

 protected:
    FrontendList(wxWindow* parent, long look);

    /// Null for one that is just going, which the toolkit may still ask for.
    const FrontendItem* ItemAt(long index) const;
    void SpreadColumns();  ///< in the width that the list has now

 private:
    virtual void Emptied() {}

    /// What is selected when nothing has been so far; wxNOT_FOUND for nothing.
    virtual long DefaultIndex() const { return wxNOT_FOUND; }

    void Change();
    void FinishBatch();
    void SelectAgain();
    void ForgetWidths();
    void MeasureTitles();
    void MeasureNewRows();
    int WidthOf(int column) const;
    long IndexOf(std::int32_t frontendId) const;  ///< wxNOT_FOUND when it is not there
    long Count() const { return static_cast<long>(m_items.size()); }
    void Tell(const FrontendEvent& event, long index) const;

    std::vector<FrontendItem> m_items;
    std::int32_t m_selectedId = 0;
    FrontendEvent m_activated, m_selected;
    std::function<void()> m_updated;
    std::vector<int> m_widest;  ///< content of each column in pixels; empty while nothing is measured
    long m_measured = 0;        ///< so many rows from the first
    OnceLater m_update;
};

}  // namespace rvl
