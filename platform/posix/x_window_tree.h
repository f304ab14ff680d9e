#pragma once

#include <X11/Xlib.h>

#include <vector>

namespace rvl::platform {

/// The windows directly inside a window, topmost first.
std::vector<Window> DirectChildren(Display* display, Window window);

/// The windows that programs have put on the desktop, topmost first: without the frames of a window manager.
std::vector<Window> ProgramWindows(Display* display);

/// The one of them that a window belongs to, be it inside of it or the frame around it; None when there is
/// none.
Window ProgramWindowOf(Display* display, Window window);

/// True when a running window manager says that it does what `feature` names ("_NET_ACTIVE_WINDOW").
bool WindowManagerOffers(Display* display, const char* feature);

}  // namespace rvl::platform
