#pragma once

#include "ui/frontend_list.h"

namespace rvl {

/// The front ends as a table of names and versions.
class FrontendTable : public FrontendList {
 public:
    explicit FrontendTable(wxWindow* parent);

 private:
    wxString OnGetItemText(long index, long column) const override;
};

}  // namespace rvl
