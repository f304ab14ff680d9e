#include "ui/frontend_list.h"

#include <wx/imaglist.h>
#include <wx/settings.h>

#include <algorithm>

namespace rvl {
namespace {

const wxSize kSmallest(120, 80);  // scroll bars complain when they get no room
constexpr int kCellMargin = 16;   // both sides
constexpr int kMostCharacters = 60;
constexpr long kStyle = wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL;

}  // namespace

FrontendList::FrontendList(wxWindow* parent, long look)
    : wxListView(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(kSmallest), look | kStyle),
      m_update(*this, [this] { FinishBatch(); }) {
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        const bool selects = event.GetKeyCode() == WXK_SPACE;  // the toolkit's list would start it
        if (selects && GetFocusedItem() != -1) Select(GetFocusedItem());
        event.Skip(!selects);
    });
    Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
        event.Skip();
        ForgetWidths();
        CallAfter([this] { FitColumns(); });
    });
    Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent& event) { Tell(m_activated, event.GetIndex()); });
    Bind(wxEVT_LIST_ITEM_SELECTED, [this](wxListEvent& event) {
        const FrontendItem* const item = ItemAt(event.GetIndex());
        m_selectedId = item == nullptr ? 0 : item->frontendId;
        Tell(m_selected, event.GetIndex());
    });
}

const FrontendItem* FrontendList::ItemAt(long index) const {
    return index >= 0 && index < Count() ? &m_items[static_cast<std::size_t>(index)] : nullptr;
}

void FrontendList::Tell(const FrontendEvent& event, long index) const {
    if (!event || ItemAt(index) == nullptr) return;
    const FrontendItem item = *ItemAt(index);  // a new list may come meanwhile
    event(item.frontendId, item.name);
}

void FrontendList::Clear() {
    Change();
    DeleteAllItems();
    m_items.clear();
    ForgetWidths();
    Emptied();
}

void FrontendList::Add(const FrontendItem& item) {
    Change();
    const long index = IndexOf(item.frontendId);
    if (index == wxNOT_FOUND) return m_items.push_back(item);
    m_items[static_cast<std::size_t>(index)] = item;
    ForgetWidths();
}

void FrontendList::Remove(std::int32_t frontendId) {
    const long index = IndexOf(frontendId);
    if (index == wxNOT_FOUND) return;
    Change();
    m_items.erase(m_items.begin() + index);
    ForgetWidths();
    if (index < GetItemCount()) DeleteItem(index);
    if (m_selectedId == frontendId) m_selectedId = 0;
}

long FrontendList::IndexOf(std::int32_t frontendId) const {
    const auto found = std::ranges::find(m_items, frontendId, &FrontendItem::frontendId);
    return found == m_items.end() ? wxNOT_FOUND : static_cast<long>(found - m_items.begin());
}

void FrontendList::Change() {
    if (m_update.Ask()) Freeze();
}

void FrontendList::FinishBatch() {
    SetItemCount(Count());
    Refresh();
    SelectAgain();
    FitColumns();
    Thaw();
    if (m_updated) m_updated();
}

/// The list may have been sent again while the user looked at it.
void FrontendList::SelectAgain() {
    if (GetItemCount() == 0 || GetFirstSelected() != -1) return;
    const long selected = m_selectedId == 0 ? wxNOT_FOUND : IndexOf(m_selectedId);
    const long index = selected == wxNOT_FOUND ? DefaultIndex() : selected;
    if (index != wxNOT_FOUND) Select(index);
    // Not every system's list has a row from which the keys begin.
    if (index != wxNOT_FOUND || GetFocusedItem() == -1) Focus(std::max(index, 0L));
}

void FrontendList::FitColumns() {
    if (!IsShownOnScreen()) return;
    if (m_widest.empty()) MeasureTitles();
    MeasureNewRows();
    SpreadColumns();
}

void FrontendList::ForgetWidths() {
    m_widest.clear();
    m_measured = 0;
}

void FrontendList::MeasureTitles() {
    wxListItem title;
    title.SetMask(wxLIST_MASK_TEXT);
    for (int column = 0; column < GetColumnCount(); ++column) {
        GetColumn(column, title);
        m_widest.push_back(GetTextExtent(title.GetText()).GetWidth());
    }
}

/// The toolkit's own measure is not taken again when an item comes or changes. Every row is measured once,
/// since a long list comes in many batches.
void FrontendList::MeasureNewRows() {
    for (; m_measured < Count(); ++m_measured)
        for (int column = 0; column < GetColumnCount(); ++column) {
            int& widest = m_widest[static_cast<std::size_t>(column)];
            widest = std::max(widest, GetTextExtent(OnGetItemText(m_measured, column)).GetWidth());
        }
}

int FrontendList::WidthOf(int column) const {
    const int most = GetCharWidth() * kMostCharacters;  // one long name is not all there is to see
    const int content = std::min(m_widest[static_cast<std::size_t>(column)], most);
    const wxImageList* const images = GetImageList(wxIMAGE_LIST_SMALL);
    return content + FromDIP(kCellMargin) + (images == nullptr ? 0 : images->GetSize().GetWidth());
}

/// The last one over the rest of the list, so that its rows can be hit anywhere.
void FrontendList::SpreadColumns() {
    if (m_widest.empty()) return;
    int left = GetClientSize().GetWidth() - wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
    for (int column = 0; column < GetColumnCount(); ++column) {
        const int width = WidthOf(column);
        const bool last = column + 1 == GetColumnCount();
        SetColumnWidth(column, last ? std::max(width, left) : width);
        left -= width;
    }
}

}  // namespace rvl
