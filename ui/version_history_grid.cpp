#include "ui/version_history_grid.h"

#include <algorithm>
#include <array>
#include <memory>

#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr std::array<const char*, 3> kTitles = {"Version", "Date Released", "Release Notes"};
constexpr int kNotes = 2;
constexpr int kLeastNotesWidth = 160;
const wxColour kRevokedColour(128, 128, 128);

}  // namespace

VersionHistoryGrid::VersionHistoryGrid(wxWindow* parent)
    : wxGrid(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_THEME | wxWANTS_CHARS,
             "grdVersionHistory"),
      m_fit(*this, [this] { FitCells(); }) {
    CreateGrid(0, static_cast<int>(kTitles.size()), wxGridSelectRows);
    for (std::size_t column = 0; column < kTitles.size(); ++column)
        SetColLabelValue(static_cast<int>(column), kTitles[column]);
    EnableEditing(false);
    DisableDragRowSize();
    HideRowLabels();
    SetColLabelSize(wxGRID_AUTOSIZE);
    SetColLabelAlignment(wxALIGN_LEFT, wxALIGN_CENTRE);
    SetDefaultCellAlignment(wxALIGN_LEFT, wxALIGN_TOP);
    SetLabelFont(GetFont());
    SetTabBehaviour(Tab_Leave);
    wxGridCellAttrPtr notes(new wxGridCellAttr);  // counts its references
    notes->SetRenderer(std::make_unique<wxGridCellAutoWrapStringRenderer>().release());
    SetColAttr(kNotes, notes.release());
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        m_fit.Ask();
        event.Skip();
    });
    Bind(wxEVT_GRID_COL_SIZE, [this](wxGridSizeEvent&) { m_fit.Ask(); });
}

void VersionHistoryGrid::ShowRows(const std::vector<VersionHistoryRow>& rows) {
    const wxGridUpdateLocker batch(this);
    if (GetNumberRows() > 0) DeleteRows(0, GetNumberRows());
    AppendRows(static_cast<int>(rows.size()));
    int index = 0;
    for (const VersionHistoryRow& row : rows)
        ShowRow(index++, row);
    FitCells();
}

void VersionHistoryGrid::ShowRow(int index, const VersionHistoryRow& row) {
    SetCellValue(index, 0, ToWx(row.version));
    SetCellValue(index, 1, ToWx(row.dateReleased));
    SetCellValue(index, kNotes, ToWxLines(row.releaseNotes));
    wxGridCellAttrPtr look(new wxGridCellAttr);
    look->SetReadOnly();
    if (row.revoked) {
        look->SetTextColour(kRevokedColour);
        look->SetFont(GetDefaultCellFont().Strikethrough());
    }
    SetRowAttr(index, look.release());  // the grid owns it
}

/// The row heights depend on the width that is left for the notes.
void VersionHistoryGrid::FitCells() {
    const wxGridUpdateLocker batch(this);
    for (int column = 0; column < kNotes; ++column)
        AutoSizeColumn(column, false);
    const int left = GetClientSize().GetWidth() - GetColSize(0) - GetColSize(1);
    SetColSize(kNotes, std::max(left, FromDIP(kLeastNotesWidth)));
    AutoSizeRows(false);
}

}  // namespace rvl
