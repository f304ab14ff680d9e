#include "tools/msaccess/posix/desktop.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <unistd.h>

namespace rvl::msaccess {
namespace {

const unsigned char* BytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

/// The type is None when there is no such property.
std::string ReadBytes(Display* display, Window window, Atom property, Bool remove, Atom& type) {
    constexpr long kLongest = 4096;
    int format = 0;
    unsigned long size = 0, left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display, window, property, 0, kLongest, remove, AnyPropertyType, &type, &format, &size,
                       &left, &data);
    const std::unique_ptr<unsigned char, int (*)(void*)> owned(data, XFree);
    return format == 8 ? std::string(reinterpret_cast<const char*>(data), size) : "";
}

}  // namespace

bool Desktop::HasWindowManager() const {
    Atom type = None;
    ReadBytes(Get(), Root(), Name("_NET_SUPPORTING_WM_CHECK"), False, type);
    return type != None;
}

Window Desktop::Create(Window parent, const XRectangle& place, const char* windowClass,
                       const Text& text) const {
    const unsigned long grey = 0xd4d0c8;
    const Window window = XCreateSimpleWindow(Get(), parent, place.x, place.y, place.width, place.height, 0,
                                              BlackPixel(Get(), DefaultScreen(Get())), grey);
    Text name = windowClass;
    XClassHint hint{name.data(), name.data()};
    XSetClassHint(Get(), window, &hint);
    SetTitle(window, text);
    XSelectInput(Get(), window, ExposureMask | PropertyChangeMask | StructureNotifyMask);
    return window;
}

Window Desktop::CreateTopLevel(const XRectangle& place, const char* windowClass, const Text& text) const {
    const Window window = Create(Root(), place, windowClass, text);
    Atom closing = Name("WM_DELETE_WINDOW");
    XSetWMProtocols(Get(), window, &closing, 1);
    const long process = getpid();
    XChangeProperty(Get(), window, Name("_NET_WM_PID"), XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&process), 1);
    return window;
}

void Desktop::SetTitle(Window window, const Text& title) const {
    SetText(window, "_NET_WM_NAME", title);
    XStoreName(Get(), window, title.c_str());
}

void Desktop::SetText(Window window, const char* property, const Text& text) const {
    const std::string utf8 = Utf8FromText(text);
    XChangeProperty(Get(), window, Name(property), Name("UTF8_STRING"), 8, PropModeReplace, BytesOf(utf8),
                    static_cast<int>(utf8.size()));
}

Text Desktop::TakeText(Window window, const char* property) const {
    Atom type = None;
    const std::string bytes = ReadBytes(Get(), window, Name(property), True, type);
    return type == XA_STRING ? bytes : TextFromUtf8(bytes);
}

}  // namespace rvl::msaccess
