#include "platform/desktop_windows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/event_loop.h"
#include "platform/process.h"
#include "platform/running_access.h"
#include "tests/support/running_msaccess.h"

// Their macros disturb the others.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace rvl::platform {
namespace {

using test::RunningMsaccess;
using test::RunUntil;
using test::Xprop;

class DesktopWindowsTest : public testing::Test {
 protected:
    /// One for all tests of a process: its own connection stays.
    DesktopWindowsTest() { static const test::VirtualDisplay display; }

    static bool IsShown(WindowHandle window) {
        const std::vector<WindowHandle> shown = TopLevelWindows();
        return std::find(shown.begin(), shown.end(), window) != shown.end();
    }

    static WindowHandle FindTitle(const Text& title) {
        for (const WindowHandle window : TopLevelWindows())
            if (WindowText(window) == title) return window;
        return 0;
    }
};

TEST_F(DesktopWindowsTest, AWindowAndWhatItTells) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    ASSERT_TRUE(IsWindow(window) && IsShown(window));
    EXPECT_TRUE(HasWindowClass(window, "OMain"));
    EXPECT_FALSE(HasWindowClass(window, "omain") || HasWindowClass(window, ""));
    EXPECT_EQ(WindowText(window), "Microsoft Access - [orders.mdb]");
    EXPECT_EQ(WindowProcessId(window), access.process->ProcessId());
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
}

TEST_F(DesktopWindowsTest, AValueIsKeptWithAWindow) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    EXPECT_EQ(WindowProperty(window, "RVL_FrontendID"), 0U);
    for (const std::uint32_t value : {5U, 0U, 0x80000000U, 0xFFFFFFFFU}) {
        SetWindowProperty(window, "RVL_FrontendID", value);
        EXPECT_EQ(WindowProperty(window, "RVL_FrontendID"), value);
        EXPECT_EQ(Xprop(window, "RVL_FrontendID"),
                  "RVL_FrontendID(CARDINAL) = " + std::to_string(value) + "\n");
    }
    Xprop(window, "-f RVL_Other 32c -set RVL_Other 12");
    EXPECT_EQ(WindowProperty(window, "RVL_Other"), 12U);
    Xprop(window, "-f RVL_Other 8s -set RVL_Other 12");
    EXPECT_EQ(WindowProperty(window, "RVL_Other"), 0U);
}

TEST_F(DesktopWindowsTest, TheRunningAccessOfAWindow) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    const auto projectIs = [&](const std::optional<Text>& project) {
        return RunUntil([&] { return FindRunningAccess(window)->currentProject == project; });
    };
    EXPECT_EQ(FindRunningAccess(window)->version, "11.0");
    EXPECT_EQ(FindRunningAccess(window)->build, "8166");
    EXPECT_TRUE(projectIs("C:\\fe\\orders.mdb"));
    test::OrderMsaccess(window, "open C:\\fe\\\xc3\xa9.mdb");
    EXPECT_TRUE(projectIs("C:\\fe\\\xe9.mdb"));
    test::OrderMsaccess(window, "close database");
    EXPECT_TRUE(projectIs(std::nullopt));
    Xprop(window, "-remove ACCESS_BUILD");
    EXPECT_EQ(FindRunningAccess(window)->build, "");
    Xprop(window, "-remove ACCESS_VERSION");
    EXPECT_FALSE(FindRunningAccess(window));
}

TEST_F(DesktopWindowsTest, ADialogIsReadAndClosedByItself) {
    const RunningMsaccess access("cant-make-changes");
    const WindowHandle window = access.Window();
    WindowHandle dialog = 0;
    ASSERT_TRUE(RunUntil([&] { return (dialog = FindTitle("Microsoft Access")) != 0; }));
    EXPECT_TRUE(HasWindowClass(dialog, "#32770"));
    const std::vector<WindowHandle> inside = ChildWindows(dialog);
    ASSERT_EQ(inside.size(), 1U);
    EXPECT_TRUE(HasWindowClass(inside[0], "MSOUNISTAT"));
    EXPECT_TRUE(WindowText(inside[0]).starts_with("You can't make changes"));
    RequestClose(dialog);
    EXPECT_TRUE(RunUntil([&] { return !IsWindow(dialog); }));
    EXPECT_TRUE(IsWindow(window) && !IsWindow(inside[0]));
}

TEST_F(DesktopWindowsTest, EndingAWindowMoreAndMoreFirmly) {
    const struct {
        const char* order;
        int ignored;  ///< ways to end it that have no effect
        std::uint32_t exitCode;
    } rows[] = {{"", 0, 0},
                {"ignore close", 1, 128 + SIGTERM},
                {"hang", 1, 128 + SIGTERM},
                {"stubborn", 2, 128 + SIGKILL}};
    using Way = void (*)(WindowHandle);
    constexpr Way kWays[] = {RequestClose, PostQuit, TerminateProcessOf};
    for (const auto& [order, ignored, exitCode] : rows) {
        SCOPED_TRACE(order);
        const RunningMsaccess access(order);
        const WindowHandle window = access.Window();
        for (int way = 0; way < ignored; ++way)
            kWays[way](window);
        EXPECT_EQ(access.process->ExitCode(), StartedProcess::kStillActive);
        kWays[ignored](window);
        EXPECT_EQ(access.Ended(), exitCode);
        EXPECT_TRUE(RunUntil([&] { return !IsWindow(window); }));
    }
}

TEST_F(DesktopWindowsTest, AWindowThatIsGone) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    TerminateProcessOf(window);
    ASSERT_TRUE(RunUntil([&] { return !IsWindow(window); }));
    for (const WindowHandle gone : {window, WindowHandle{0}, ~WindowHandle{0}}) {
        SetWindowProperty(gone, "RVL_FrontendID", 5);
        for (const auto act : {RequestClose, PostQuit, TerminateProcessOf, AskToRegister, PretendActivation})
            act(gone);
        EXPECT_FALSE(IsWindow(gone) || IsShown(gone) || HasWindowClass(gone, "OMain"));
        EXPECT_FALSE(BringToForeground(gone) || FindRunningAccess(gone));
        EXPECT_TRUE(WindowText(gone).empty() && ChildWindows(gone).empty());
        EXPECT_EQ(WindowProperty(gone, "RVL_FrontendID") + WindowProcessId(gone), 0U);
    }
}

TEST_F(DesktopWindowsTest, TheNumberOfAProcessGroupIsNoProcess) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    SetWindowProperty(window, "_NET_WM_PID", -access.process->ProcessId());
    PostQuit(window);
    TerminateProcessOf(window);
    test::OrderMsaccess(window, "exit 5");
    EXPECT_EQ(access.Ended(), 5U);
}

TEST_F(DesktopWindowsTest, TheForegroundWithoutAWindowManager) {
    const RunningMsaccess first, second;
    const WindowHandle a = first.Window(), b = second.Window();
    for (const WindowHandle window : {a, b, a, a}) {
        EXPECT_TRUE(BringToForeground(window));
        EXPECT_EQ(ForegroundWindow(), window);
        EXPECT_EQ(TopLevelWindows().front(), window);
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

TEST_F(DesktopWindowsTest, AWindowManagersWordCounts) {
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

TEST_F(DesktopWindowsTest, AFrameIsNotTheProgramsWindow) {
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

TEST_F(DesktopWindowsTest, AnEndIsTakenNoteOf) {
    auto access = std::make_unique<RunningMsaccess>("exit 7");
    EXPECT_EQ(access->Ended(), 7U);
    EXPECT_EQ(access->process->ExitCode(), 7U);
    int error = 0;
    EXPECT_EQ(StartedProcess::Start("\"C:\\none.exe\" x", error), nullptr);
    EXPECT_EQ(error, 2);

    access = std::make_unique<RunningMsaccess>();
    const auto process = static_cast<pid_t>(access->process->ProcessId());
    access->process.reset();
    EXPECT_EQ(kill(process, SIGKILL), 0);  // it has lived on
    EXPECT_TRUE(RunUntil([&] { return kill(process, 0) != 0; }));
}

/// In a process of its own, since it ends.
TEST(DesktopLost, DISABLED_Child) {
    test::VirtualDisplay display;
    OnDesktopLost([] { ExitProcessNow(17); });
    PostEvent([&] { display.End(); });
    RunUntil([] { return false; });
}

TEST(DesktopLost, IsNoticedByAnIdleProcess) {
    EXPECT_EQ(test::OutputOf("RVL_TEST_CHILD=1 /proc/" + std::to_string(getpid()) +
                             "/exe --gtest_also_run_disabled_tests --gtest_filter=DesktopLost.DISABLED_Child "
                             ">/dev/null 2>&1; echo $?"),
              "17\n");
}

}  // namespace
}  // namespace rvl::platform
