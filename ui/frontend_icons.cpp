#include "ui/frontend_icons.h"

#include <wx/imaglist.h>

#include <memory>

#include "ui/icon_picture.h"
#include "ui/pictures.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

constexpr int kIconSize = 32;
constexpr int kMargin = 6;  ///< around an icon
constexpr int kNoIcon = 0;  ///< index of the picture of those without an icon

/// In the middle, with a margin around; returns the index.
int AddPicture(wxImageList& images, const wxBitmap& picture) {
    const wxSize size = images.GetSize(), rest = size - picture.GetSize();
    const wxPoint place(rest.GetWidth() / 2, rest.GetHeight() / 2);
    return images.Add(wxBitmap(picture.ConvertToImage().Size(size, place)));
}

}  // namespace

FrontendIcons::FrontendIcons(wxWindow* parent) : FrontendList(parent, wxLC_NO_HEADER) {
    AppendColumn("Front end");
    MakeImages();
    Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
        event.Skip();
        MakeImages();
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        SpreadColumns();
    });
    Bind(wxEVT_MOTION, &FrontendIcons::ShowToolTip, this);
}

/// In the scaling of the screen that shows the list.
void FrontendIcons::MakeImages() {
    const int size = FromDIP(kIconSize + 2 * kMargin);
    auto images = std::make_unique<wxImageList>(size, size);
    AddPicture(*images, FrontendPicture(FromDIP(kIconSize)));  // the first one gives the rows their height
    AssignImageList(images.release(), wxIMAGE_LIST_SMALL);
    m_icons.clear();
}

void FrontendIcons::Emptied() {
    m_icons.clear();
    wxImageList& images = *GetImageList(wxIMAGE_LIST_SMALL);
    while (images.GetImageCount() > 1)
        images.Remove(images.GetImageCount() - 1);
}

wxString FrontendIcons::OnGetItemText(long index, long) const {
    const FrontendItem* const item = ItemAt(index);
    return item == nullptr ? wxString() : ToWx(item->name);
}

int FrontendIcons::OnGetItemImage(long index) const {
    const FrontendItem* const item = ItemAt(index);
    return item == nullptr || item->iconFile.empty() ? kNoIcon : LoadedIcon(item->iconFile);
}

int FrontendIcons::LoadedIcon(const Text& path) const {
    const auto known = m_icons.find(path);
    if (known != m_icons.end()) return known->second;
    const wxBitmap picture = IconPicture(path, FromDIP(kIconSize));
    return m_icons[path] = picture.IsOk() ? AddPicture(*GetImageList(wxIMAGE_LIST_SMALL), picture) : kNoIcon;
}

/// Only where a double click does it.
void FrontendIcons::ShowToolTip(wxMouseEvent& event) {
    event.Skip();
    int where = 0;
    const bool overItem = HitTest(event.GetPosition(), where) != wxNOT_FOUND;
    if (overItem == m_overItem) return;
    m_overItem = overItem;
    overItem ? SetToolTip("Double click to launch application") : UnsetToolTip();
}

}  // namespace rvl
