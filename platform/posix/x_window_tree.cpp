#include "platform/posix/x_window_tree.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <memory>

#include "platform/posix/x_property.h"

namespace rvl::platform {
namespace {

struct Kin {
    Window parent = None;
    std::vector<Window> children;  ///< topmost first
};

Kin KinOf(Display* display, Window window) {
    Kin kin;
    Window root = None, *children = nullptr;
    unsigned int count = 0;
    if (XQueryTree(display, window, &root, &kin.parent, &children, &count) == 0) return {};
    const std::unique_ptr<Window, XFreeDeleter> owned(children);
    kin.children.assign(std::make_reverse_iterator(children + count), std::make_reverse_iterator(children));
    return kin;
}

bool IsMapped(Display* display, Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(display, window, &attributes) != 0 && attributes.map_state != IsUnmapped;
}

/// By a window manager, which has taken the window and its frame off the screen.
bool IsMinimised(Display* display, Window window) {
    constexpr const char* kState = "WM_STATE";
    return ValueProperty(display, window, kState, XInternAtom(display, kState, False)) == IconicState;
}

bool IsProgramWindow(Display* display, Window window) {
    return HasProperty(display, window, "WM_STATE") || HasProperty(display, window, "WM_CLASS");
}

/// What a window manager has framed; a window without a program's marks stands for itself.
Window InsideFrame(Display* display, Window frame) {
    std::vector<Window> level{frame};
    while (!level.empty()) {
        std::vector<Window> below;
        for (const Window window : level) {
            if (IsProgramWindow(display, window)) return window;
            const std::vector<Window> children = DirectChildren(display, window);
            below.insert(below.end(), children.begin(), children.end());
        }
        level = std::move(below);
    }
    return frame;
}

}  // namespace

std::vector<Window> DirectChildren(Display* display, Window window) {
    return KinOf(display, window).children;
}

std::vector<Window> ProgramWindows(Display* display) {
    const Window root = DefaultRootWindow(display);
    constexpr const char* kStacking = "_NET_CLIENT_LIST_STACKING";
    std::vector<Window> windows;
    if (WindowManagerOffers(display, kStacking)) {
        windows = ValuesProperty(display, root, kStacking, XA_WINDOW);
        std::reverse(windows.begin(), windows.end());
        return windows;
    }
    for (const Window child : DirectChildren(display, root)) {
        const Window window = InsideFrame(display, child);
        if (IsMapped(display, child) || IsMinimised(display, window)) windows.push_back(window);
    }
    return windows;
}

Window ProgramWindowOf(Display* display, Window window) {
    const Window root = DefaultRootWindow(display);
    while (window != None && window != root) {
        const Window parent = KinOf(display, window).parent;
        if (parent == root) return InsideFrame(display, window);
        window = parent;
    }
    return None;
}

bool WindowManagerOffers(Display* display, const char* feature) {
    constexpr const char* kCheck = "_NET_SUPPORTING_WM_CHECK";
    const Window root = DefaultRootWindow(display);
    const Window mark = ValueProperty(display, root, kCheck, XA_WINDOW);
    // One that has ended leaves what it wrote on the root, but not its own window.
    if (mark == None || ValueProperty(display, mark, kCheck, XA_WINDOW) != mark) return false;
    const std::vector<unsigned long> offered = ValuesProperty(display, root, "_NET_SUPPORTED", XA_ATOM);
    return std::find(offered.begin(), offered.end(), XInternAtom(display, feature, False)) != offered.end();
}

}  // namespace rvl::platform
