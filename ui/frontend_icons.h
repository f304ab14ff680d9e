#pragma once

#include <unordered_map>

#include "ui/frontend_list.h"

namespace rvl {

/// The front ends with large icons in front of their names.
class FrontendIcons : public FrontendList {
 public:
    explicit FrontendIcons(wxWindow* parent);

 private:
    void Emptied() override;
    long DefaultIndex() const override { return 0; }  ///< Enter starts it
    wxString OnGetItemText(long index, long column) const override;
    int OnGetItemImage(long index) const override;

    void MakeImages();
    int LoadedIcon(const Text& path) const;
    void ShowToolTip(wxMouseEvent& event);

    mutable std::unordered_map<Text, int> m_icons;  ///< what the image list holds, by path
    bool m_overItem = false;
};

}  // namespace rvl
