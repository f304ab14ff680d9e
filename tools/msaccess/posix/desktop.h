#pragma once

#include <X11/Xlib.h>

#include <memory>

#include "platform/text.h"

namespace rvl::msaccess {

/// The property of the main window that takes orders.
inline constexpr const char* kOrderProperty = "MSACCESS_COMMAND";

/// The connection to the X server, with what the windows of the stand-in need of it.
class Desktop {
 public:
    bool IsOpen() const { return m_display != nullptr; }
    Display* Get() const { return m_display.get(); }
    Window Root() const { return DefaultRootWindow(Get()); }
    Atom Name(const char* name) const { return XInternAtom(Get(), name, False); }
    bool HasWindowManager() const;

    /// A window of this class that tells of its changes; it is destroyed with the connection.
    Window Create(Window parent, const XRectangle& place, const char* windowClass, const Text& text) const;

    /// A top-level one of this process, which asks before it closes.
    Window CreateTopLevel(const XRectangle& place, const char* windowClass, const Text& text) const;

    void SetTitle(Window window, const Text& title) const;
    void SetText(Window window, const char* property, const Text& text) const;

    /// Its text, which is removed; empty when there is none.
    Text TakeText(Window window, const char* property) const;

 private:
    std::unique_ptr<Display, int (*)(Display*)> m_display{XOpenDisplay(nullptr), XCloseDisplay};
};

}  // namespace rvl::msaccess
