#include "platform/event_loop.h"
#include "platform/process.h"
#include "platform/running_access.h"
#include "tests/platform/desktop_fixture.h"
#include "tests/support/host_shell.h"
#include "tests/support/posix/xprop.h"

// Their macros disturb the others.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace rvl::platform {
namespace {

using test::RunningMsaccess;
using test::RunUntil;
using test::Xprop;
using XWindowsTest = test::DesktopWindowsTest;

TEST_F(XWindowsTest, PropertiesOfOtherPrograms) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    Xprop(window, "-f WM_CLASS 8s -set WM_CLASS Instance");
    EXPECT_TRUE(HasWindowClass(window, "Instance"));
    const std::pair<const char*, const char*> titles[] = {
        {"'\xc3\xa9 \xce\xa9 \xe2\x80\x94 z'", "\xe9 ? ? z"}, {"''", ""}};
    for (const auto& [title, text] : titles) {
        Xprop(window, Text("-f _NET_WM_NAME 8u -set _NET_WM_NAME ") + title);
        EXPECT_EQ(WindowText(window), text);
    }
    Xprop(window, "-remove _NET_WM_NAME");
    EXPECT_EQ(WindowText(window), "Microsoft Access - [orders.mdb]");
    SetWindowProperty(window, "RVL_FrontendID", 0x80000000U);
    EXPECT_EQ(Xprop(window, "RVL_FrontendID"), "RVL_FrontendID(CARDINAL) = 2147483648\n");
    Xprop(window, "-f RVL_Other 32c -set RVL_Other 12");
    EXPECT_EQ(WindowProperty(window, "RVL_Other"), 12U);
    Xprop(window, "-f RVL_Other 8s -set RVL_Other 12");
    EXPECT_EQ(WindowProperty(window, "RVL_Other"), 0U);
    Xprop(window, "-remove ACCESS_BUILD");
    EXPECT_EQ(FindRunningAccess(window)->build, "");
    Xprop(window, "-remove ACCESS_VERSION");
    EXPECT_FALSE(FindRunningAccess(window));
}

TEST_F(XWindowsTest, TheNumberOfAProcessGroupIsNoProcess) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    SetWindowProperty(window, "_NET_WM_PID", -access.process->ProcessId());
    PostQuit(window);
    TerminateProcessOf(window);
    test::OrderMsaccess(window, "exit 5");
    EXPECT_EQ(access.Ended(), 5U);
}

TEST_F(XWindowsTest, TheForegroundWithoutAWindowManager) {
    const RunningMsaccess first, second;
    const WindowHandle a = first.Window(), b = second.Window();
    for (const WindowHandle window : {a, b, a, a}) {
        EXPECT_TRUE(BringToForeground(window));
        EXPECT_EQ(ForegroundWindow(), window);  // at once
    }
    test::OutputOf("xdotool windowunmap --sync " + std::to_string(b));
    EXPECT_FALSE(IsShown(b));
    EXPECT_TRUE(BringToForeground(b) && IsShown(b));
}

/// The window manager's side of the conversation; what it says on the root stays when it goes.
class FakeWindowManager {
    Display* m_display = XOpenDisplay(nullptr);

 public:
    const Window root = DefaultRootWindow(m_display);

    FakeWindowManager() { XSelectInput(m_display, root, SubstructureNotifyMask); }
    ~FakeWindowManager() { XCloseDisplay(m_display); }

    void Say(Window where, const char* name, Atom type, const std::vector<unsigned long>& values) {
        XChangeProperty(m_display, where, Name(name), type, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(values.data()),
                        static_cast<int>(values.size()));
        XSync(m_display, False);
    }

    /// Puts a frame around a window.
    Window Frame(WindowHandle window) {
        const Window frame = Create();
        XReparentWindow(m_display, window, frame, 0, 0);
        XMapRaised(m_display, frame);
        XSync(m_display, False);
        return frame;
    }

    /// The window that somebody has asked to make the active one; 0 when nobody has.
    Window Asked() {
        XSync(m_display, False);
        XEvent event{};
        const bool asked = XCheckTypedEvent(m_display, ClientMessage, &event) != 0;
        return asked && event.xclient.message_type == Name("_NET_ACTIVE_WINDOW") ? event.xclient.window : 0;
    }

    Window Create() { return XCreateSimpleWindow(m_display, root, 0, 0, 900, 700, 0, 0, 0); }
    Atom Name(const char* name) { return XInternAtom(m_display, name, False); }
};

TEST_F(XWindowsTest, AWindowManagersWordCounts) {
    const RunningMsaccess first, second;
    const WindowHandle a = first.Window(), b = second.Window();
    auto manager = std::make_optional<FakeWindowManager>();
    const auto say = [&](Window where, const char* name, Window value) {
        manager->Say(where, name, XA_WINDOW, {value});
    };
    const Window root = manager->root, mark = manager->Create();
    constexpr const char *kCheck = "_NET_SUPPORTING_WM_CHECK", *kActive = "_NET_ACTIVE_WINDOW",
                         *kStacking = "_NET_CLIENT_LIST_STACKING";
    EXPECT_TRUE(BringToForeground(a));
    say(root, kCheck, mark);
    say(root, kActive, b);
    manager->Say(root, "_NET_SUPPORTED", XA_ATOM, {manager->Name(kStacking), manager->Name(kActive)});
    EXPECT_EQ(ForegroundWindow(), a);  // the mark is not its own
    say(mark, kCheck, mark);
    EXPECT_EQ(ForegroundWindow(), b);
    for (const auto& [lower, upper] : {std::pair(a, b), std::pair(b, a)}) {
        manager->Say(root, kStacking, XA_WINDOW, {lower, upper});
        EXPECT_EQ(TopLevelWindows(), (std::vector<WindowHandle>{upper, lower}));
    }
    EXPECT_TRUE(BringToForeground(b));
    EXPECT_EQ(manager->Asked(), 0U);
    EXPECT_TRUE(BringToForeground(a));
    EXPECT_EQ(manager->Asked(), a);
    say(root, kStacking, a);
    manager.reset();
    EXPECT_TRUE(IsShown(b) && ForegroundWindow() == a);
}

TEST_F(XWindowsTest, AFrameIsNotTheProgramsWindow) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    FakeWindowManager manager;
    const auto frame = static_cast<WindowHandle>(manager.Frame(window));
    EXPECT_TRUE(IsShown(window) && !IsShown(frame));
    EXPECT_EQ(access.Window(), window);
    EXPECT_TRUE(BringToForeground(window));
    EXPECT_EQ(ForegroundWindow(), window);
    EXPECT_EQ(ChildWindows(frame), std::vector<WindowHandle>{window});
    test::OutputOf("xdotool windowunmap --sync " + std::to_string(frame));
    EXPECT_FALSE(IsShown(window));
    manager.Say(window, "WM_STATE", manager.Name("WM_STATE"), {IconicState, 0});
    EXPECT_TRUE(IsShown(window));
}

/// In a process of its own, since it ends.
TEST(DesktopLost, DISABLED_Child) {
    test::VirtualDisplay display;
    OnDesktopLost([] { ExitProcessNow(17); });
    PostEvent([&] { display.End(); });
    RunUntil([] { return false; });
}

TEST(DesktopLost, IsNoticedByAnIdleProcess) {
    EXPECT_EQ(test::ChildProcess("DesktopLost.DISABLED_Child").Wait(), 17);
}

}  // namespace
}  // namespace rvl::platform
