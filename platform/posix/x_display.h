#pragma once

#include <X11/Xlib.h>

namespace rvl::platform {

/// One use of this process's own connection to the X server, which the first use opens. The windows asked of
/// belong to others and vanish at any moment: the X errors of the use are dropped, and the handling of X
/// errors is as before when it ends, for the window toolkit has its own. Uses do not nest.
class DisplayUse {
 public:
    DisplayUse();
    ~DisplayUse();
    DisplayUse(const DisplayUse&) = delete;
    DisplayUse& operator=(const DisplayUse&) = delete;

    explicit operator bool() const { return m_display != nullptr; }  ///< false: there is no server
    Display* Get() const { return m_display; }
    Window Root() const { return DefaultRootWindow(m_display); }

 private:
    Display* m_display;
};

}  // namespace rvl::platform
