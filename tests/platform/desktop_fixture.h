#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/desktop_windows.h"
#include "tests/support/running_msaccess.h"

namespace rvl::test {

using platform::TopLevelWindows;
using platform::WindowHandle;

class DesktopWindowsTest : public testing::Test {
 protected:
    /// One for all tests of a process: its own connection stays.
    DesktopWindowsTest() { static const VirtualDisplay display; }

    static bool IsShown(WindowHandle window) {
        const std::vector<WindowHandle> shown = TopLevelWindows();
        return std::find(shown.begin(), shown.end(), window) != shown.end();
    }

    static WindowHandle FindTitle(const Text& title) {
        for (const WindowHandle window : TopLevelWindows())
            if (platform::WindowText(window) == title) return window;
        return 0;
    }
};

}  // namespace rvl::test
