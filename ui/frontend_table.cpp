#include "ui/frontend_table.h"

#include "ui/wx_text.h"

namespace rvl {

FrontendTable::FrontendTable(wxWindow* parent) : FrontendList(parent, 0) {
    AppendColumn("Front end");
    AppendColumn("Version");
}

wxString FrontendTable::OnGetItemText(long index, long column) const {
    const FrontendItem* const item = ItemAt(index);
    if (item == nullptr) return "";
    return ToWx(column == 0 ? item->name : item->friendlyVersion);
}

}  // namespace rvl
