#pragma once

#include <X11/Xlib.h>

#include "tools/msaccess/painter.h"

namespace rvl::msaccess {

class XPainter : public Painter {
 public:
    XPainter(Display* display, Window window)
        : m_display(display), m_window(window), m_context(XCreateGC(display, window, 0, nullptr)) {}
    ~XPainter() override { XFreeGC(m_display, m_context); }
    XPainter(const XPainter&) = delete;
    XPainter& operator=(const XPainter&) = delete;

    using Painter::Write;
    void Fill(int x, int y, int width, int height, unsigned long color) override;
    void Box(int x, int y, int width, int height, unsigned long color) override;
    void Write(int x, int y, TextView text, unsigned long color) override;

 private:
    Display* m_display;
    Window m_window;
    GC m_context;
};

}  // namespace rvl::msaccess
