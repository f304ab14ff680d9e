#include "platform/desktop_windows.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <memory>

#include "platform/posix/x_display.h"
#include "platform/posix/x_property.h"
#include "platform/posix/x_window_tree.h"

namespace rvl::platform {
namespace {

void AppendInner(Display* display, Window window, std::vector<WindowHandle>& found) {
    for (const Window child : DirectChildren(display, window)) {
        found.push_back(static_cast<WindowHandle>(child));
        AppendInner(display, child, found);
    }
}

}  // namespace

std::vector<WindowHandle> TopLevelWindows() {
    const DisplayUse use;
    if (!use) return {};
    const std::vector<Window> windows = ProgramWindows(use.Get());
    return {windows.begin(), windows.end()};
}

std::vector<WindowHandle> ChildWindows(WindowHandle window) {
    const DisplayUse use;
    std::vector<WindowHandle> found;
    if (use) AppendInner(use.Get(), window, found);
    return found;
}

bool IsWindow(WindowHandle window) {
    const DisplayUse use;
    XWindowAttributes attributes{};
    return use && XGetWindowAttributes(use.Get(), window, &attributes) != 0;
}

bool HasWindowClass(WindowHandle window, TextView windowClass) {
    const DisplayUse use;
    XClassHint hint{};
    if (!use || XGetClassHint(use.Get(), window, &hint) == 0) return false;
    const std::unique_ptr<char, XFreeDeleter> name(hint.res_name), group(hint.res_class);
    return windowClass == name.get() || windowClass == group.get();
}

Text WindowText(WindowHandle window) {
    const DisplayUse use;
    if (!use) return "";
    if (auto text = TextProperty(use.Get(), window, "_NET_WM_NAME")) return *text;
    return TextProperty(use.Get(), window, "WM_NAME").value_or("");
}

std::uint32_t WindowProcessId(WindowHandle window) {
    return WindowProperty(window, "_NET_WM_PID");
}

std::uint32_t WindowProperty(WindowHandle window, const char* name) {
    const DisplayUse use;
    return use ? static_cast<std::uint32_t>(ValueProperty(use.Get(), window, name, XA_CARDINAL)) : 0;
}

void SetWindowProperty(WindowHandle window, const char* name, std::uint32_t value) {
    const DisplayUse use;
    if (!use) return;
    const unsigned long wide = value;  // as Xlib wants values of 32 bits
    XChangeProperty(use.Get(), window, XInternAtom(use.Get(), name, False), XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&wide), 1);
}

// A running Access tells of itself in the properties of its window from the first moment on.

void AskToRegister(WindowHandle) {}

void PretendActivation(WindowHandle) {}

}  // namespace rvl::platform
