#pragma once

#include <windows.h>

#include "tools/msaccess/painter.h"

namespace rvl::msaccess {

/// Draws what of a window has to be drawn.
class GdiPainter : public Painter {
 public:
    explicit GdiPainter(HWND window);
    ~GdiPainter() override;
    GdiPainter(const GdiPainter&) = delete;
    GdiPainter& operator=(const GdiPainter&) = delete;

    using Painter::Write;
    void Fill(int x, int y, int width, int height, unsigned long color) override;
    void Box(int x, int y, int width, int height, unsigned long color) override;
    void Write(int x, int y, TextView text, unsigned long color) override;

 private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_context;
};

}  // namespace rvl::msaccess
