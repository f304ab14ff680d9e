#include "tools/msaccess/posix/x_painter.h"

namespace rvl::msaccess {

void XPainter::Fill(int x, int y, int width, int height, unsigned long color) {
    XSetForeground(m_display, m_context, color);
    XFillRectangle(m_display, m_window, m_context, x, y, static_cast<unsigned>(width),
                   static_cast<unsigned>(height));
}

void XPainter::Box(int x, int y, int width, int height, unsigned long color) {
    Fill(x, y, width, height, color);
    XSetForeground(m_display, m_context, kShade);
    XDrawRectangle(m_display, m_window, m_context, x, y, static_cast<unsigned>(width),
                   static_cast<unsigned>(height));
}

void XPainter::Write(int x, int y, TextView text, unsigned long color) {
    XSetForeground(m_display, m_context, color);
    XDrawString(m_display, m_window, m_context, x, y, text.data(), static_cast<int>(text.size()));
}

}  // namespace rvl::msaccess
