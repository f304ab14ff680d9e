#include "platform/desktop_windows.h"

#include <gtest/gtest.h>

#include "platform/running_access.h"
#include "tests/platform/desktop_fixture.h"

namespace rvl::platform {
namespace {

using test::DesktopWindowsTest;
using test::RunningMsaccess;
using test::RunUntil;

TEST_F(DesktopWindowsTest, AWindowAndWhatItTells) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    ASSERT_TRUE(IsWindow(window) && IsShown(window));
    EXPECT_TRUE(HasWindowClass(window, "OMain"));
    EXPECT_FALSE(HasWindowClass(window, "omain") || HasWindowClass(window, ""));
    EXPECT_EQ(WindowText(window), "Microsoft Access - [orders.mdb]");
    EXPECT_EQ(WindowProcessId(window), access.process->ProcessId());
}

TEST_F(DesktopWindowsTest, AValueIsKeptWithAWindow) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    EXPECT_EQ(WindowProperty(window, "RVL_FrontendID"), 0U);
    for (const std::uint32_t value : {5U, 0U, 0x80000000U, 0xFFFFFFFFU}) {
        SetWindowProperty(window, "RVL_FrontendID", value);
        EXPECT_EQ(WindowProperty(window, "RVL_FrontendID"), value);
    }
}

TEST_F(DesktopWindowsTest, TheRunningAccessOfAWindow) {
    const RunningMsaccess access;
    const WindowHandle window = access.Window();
    const auto projectIs = [&](const std::optional<Text>& project) {
        return RunUntil([&] { return FindRunningAccess(window)->currentProject == project; });
    };
    AskToRegister(window);
    ASSERT_TRUE(RunUntil([&] { return FindRunningAccess(window).has_value(); }));
    EXPECT_EQ(FindRunningAccess(window)->version, "11.0");
    EXPECT_EQ(FindRunningAccess(window)->build, "8166");
    EXPECT_TRUE(projectIs("C:\\fe\\orders.mdb"));
    test::OrderMsaccess(window, "open C:\\fe\\\xc3\xa9.mdb");
    EXPECT_TRUE(projectIs("C:\\fe\\\xe9.mdb"));
    test::OrderMsaccess(window, "close database");
    EXPECT_TRUE(projectIs(std::nullopt));
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
    } rows[] = {
        {"", 0, 0},
        {"ignore close", 1, test::kExitCodeOfQuit},
        {"hang", test::kHangIgnores, test::kHangIgnores == 1 ? test::kExitCodeOfQuit : test::kExitCodeOfKill},
        {"stubborn", 2, test::kExitCodeOfKill}};
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

TEST_F(DesktopWindowsTest, TheForeground) {
    const RunningMsaccess first, second;
    const WindowHandle a = first.Window(), b = second.Window();
    for (const WindowHandle window : {a, b, a, a}) {
        EXPECT_TRUE(BringToForeground(window));
        EXPECT_TRUE(RunUntil([&] { return ForegroundWindow() == window; }));
        EXPECT_TRUE(RunUntil([&] { return TopLevelWindows().front() == window; }));
    }
}

TEST_F(DesktopWindowsTest, AnEndIsTakenNoteOf) {
    auto access = std::make_unique<RunningMsaccess>("exit 7");
    EXPECT_EQ(access->Ended(), 7U);
    EXPECT_EQ(access->process->ExitCode(), 7U);
    int error = 0;
    EXPECT_EQ(StartedProcess::Start("\"C:\\none.exe\" x", error), nullptr);
    EXPECT_EQ(error, 2);

    access = std::make_unique<RunningMsaccess>();
    const WindowHandle window = access->Window();
    access->process.reset();
    EXPECT_TRUE(IsWindow(window));  // it lives on
    TerminateProcessOf(window);
    EXPECT_TRUE(RunUntil([&] { return !IsWindow(window); }));
}

}  // namespace
}  // namespace rvl::platform
