#include "tools/msaccess/win32/gdi_painter.h"

#include "platform/win32/wide.h"

namespace rvl::msaccess {
namespace {

COLORREF ColorOf(unsigned long color) {
    return RGB(color >> 16 & 0xff, color >> 8 & 0xff, color & 0xff);
}

}  // namespace

GdiPainter::GdiPainter(HWND window) : m_window(window), m_context(BeginPaint(window, &m_paint)) {
    SetBkMode(m_context, TRANSPARENT);
    SetTextAlign(m_context, TA_BASELINE);
    SelectObject(m_context, GetStockObject(DEFAULT_GUI_FONT));
    SelectObject(m_context, GetStockObject(DC_BRUSH));
    SelectObject(m_context, GetStockObject(DC_PEN));
}

GdiPainter::~GdiPainter() {
    EndPaint(m_window, &m_paint);
}

void GdiPainter::Fill(int x, int y, int width, int height, unsigned long color) {
    SetDCBrushColor(m_context, ColorOf(color));
    PatBlt(m_context, x, y, width, height, PATCOPY);
}

void GdiPainter::Box(int x, int y, int width, int height, unsigned long color) {
    SetDCBrushColor(m_context, ColorOf(color));
    SetDCPenColor(m_context, ColorOf(kShade));
    Rectangle(m_context, x, y, x + width + 1, y + height + 1);
}

void GdiPainter::Write(int x, int y, TextView text, unsigned long color) {
    SetTextColor(m_context, ColorOf(color));
    TextOutW(m_context, x, y, platform::Wide(text).c_str(), static_cast<int>(text.size()));
}

}  // namespace rvl::msaccess
