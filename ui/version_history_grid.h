#pragma once

#include <wx/grid.h>

#include <vector>

#include "session/switchboard_view.h"
#include "ui/once_later.h"

namespace rvl {

/// grdVersionHistory: the released versions of a front end. Notes are as wide as the window lets them and as
/// high as they need; revoked versions are grey and struck through.
class VersionHistoryGrid : public wxGrid {
 public:
    explicit VersionHistoryGrid(wxWindow* parent);

    void ShowRows(const std::vector<VersionHistoryRow>& rows);  ///< replaces what is shown

 private:
    void ShowRow(int index, const VersionHistoryRow& row);
    void FitCells();

    OnceLater m_fit;
};

}  // namespace rvl
