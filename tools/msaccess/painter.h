#pragma once

#include <X11/Xlib.h>

#include "platform/text.h"

namespace rvl::msaccess {

/// Draws plain areas and lines of text into one window.
class Painter {
 public:
    static constexpr unsigned long kFace = 0xd4d0c8, kShade = 0x808080, kWhite = 0xffffff, kBlack = 0,
                                   kCaption = 0x0a246a;

    Painter(Display* display, Window window)
        : m_display(display), m_window(window), m_context(XCreateGC(display, window, 0, nullptr)) {}
    ~Painter() { XFreeGC(m_display, m_context); }
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    void Fill(int x, int y, int width, int height, unsigned long color);
    void Box(int x, int y, int width, int height, unsigned long color);     ///< filled, with a line around it
    void Write(int x, int y, TextView text, unsigned long color = kBlack);  ///< y is that of the base line

 private:
    Display* m_display;
    Window m_window;
    GC m_context;
};

/// The main window of Access with a database open, or with none (an empty name). The caption is drawn where
/// no window manager does it.
void PaintMainWindow(Painter& painter, int width, int height, const Text& database, bool withCaption);

}  // namespace rvl::msaccess
