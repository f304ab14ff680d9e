#pragma once

#include <wx/splitter.h>

#include "runtime/window_positions.h"

namespace rvl {

/// Two panes side by side. The bar between them is moved with the mouse, or with the keyboard: F8 takes hold
/// of it, the arrow keys, Home and End move it, any other key lets it go.
class Splitter : public wxSplitterWindow, public PositionedSplitter {
 public:
    explicit Splitter(wxWindow* parent);

    /// Where the user wants the bar, also while the window is too small for that.
    std::int32_t Position() const override { return m_wanted; }
    void SetPosition(std::int32_t position) override;

 private:
    void OnKey(wxKeyEvent& event);
    bool MoveWith(int key);
    void Hold(bool held);
    void DrawSash(wxDC& dc) override;

    std::int32_t m_wanted = 0;
    bool m_held = false;
};

}  // namespace rvl
