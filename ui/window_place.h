#pragma once

#include <wx/toplevel.h>

#include "runtime/window_positions.h"

namespace rvl {

/// A top-level window whose place is kept. It remembers where the window was before it was maximized: not
/// every system can tell afterwards.
class WindowPlace : public PlacedWindow {
 public:
    explicit WindowPlace(wxTopLevelWindow& window);

    PixelRectangle NormalRectangle() const override;
    void SetNormalRectangle(const PixelRectangle& rectangle) override;
    bool IsMaximized() const override { return m_window.IsMaximized(); }
    void Maximize() override { m_window.Maximize(); }
    std::vector<PixelRectangle> Screens() const override;

 private:
    void Remember();

    wxTopLevelWindow& m_window;
    wxRect m_normal;
};

}  // namespace rvl
