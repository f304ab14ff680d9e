#include "deploy/shell_link.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/workstation.h"
#include "tests/util/recorded_errors.h"

namespace rvl {
namespace {

const Text kNul(1, '\0');

class ShellLinkClassTest : public testing::Test {
 protected:
    ShellLinkClassTest() { test::WriteHostFile(test::DriveC() + "/bin/t.exe", "x"); }
    ~ShellLinkClassTest() override { test::EmptyDriveC(); }

    cShellLink link;
};

Text IconIn(const Text& path) {
    platform::ShellLink read;
    EXPECT_EQ(platform::ReadShellLink(path, read), 0);
    return read.iconLocation + "," + std::to_string(read.iconIndex);
}

TEST_F(ShellLinkClassTest, SavesAndResolves) {
    link.SetTarget("C:\\bin\\..\\BIN\\t.exe" + kNul + "x");
    EXPECT_EQ(link.Target(), "C:\\BIN\\t.exe");
    link.SetIcon(4);
    link.SetArguments("-start_frontend 3 \"N\xE4me\"" + kNul + "z");
    link.SetDescription(Text(300, 'd'));
    link.SetWorkingDirectory(Text(300, 'w'));
    EXPECT_EQ(link.WorkingDirectory(), Text(259, 'w'));
    link.Save("C:\\a.lnk");
    link.Save("C:\\bin\\b.lnk");
    EXPECT_EQ(link.SavedPath(), "C:\\bin\\b.lnk");
    EXPECT_EQ(IconIn("C:\\a.lnk"), "C:\\BIN\\t.exe,4");

    cShellLink other;
    other.Resolve("C:\\bin\\b.lnk", 1, 0, 100);
    EXPECT_EQ(
        other.Target() + other.Arguments() + other.Description() + other.WorkingDirectory() + other.Icon(),
        "C:\\BIN\\t.exe-start_frontend 3 \"N\xE4me\"" + Text(300, 'd') + Text(259, 'w') + "C:\\BIN\\t.exe");
    other.SetIcon(Text("C:\\i.ico"));  // a file alone: its first icon
    other.Save("C:\\a.lnk");
    EXPECT_EQ(IconIn("C:\\a.lnk"), "C:\\i.ico,0");
}

TEST_F(ShellLinkClassTest, DisplayModes) {
    for (const auto& [mode, stored] : {std::pair{2, 1}, {3, 3}, {7, 7}, {-7, 1}, {0, 1}, {1, 1}}) {
        link.SetDisplayMode(mode);
        EXPECT_EQ(link.DisplayMode(), stored);
    }
}

TEST_F(ShellLinkClassTest, FailuresAreReportedAndRaised) {
    link.SetTarget("C:\\bin\\t.exe");
    link.Save("C:\\good.lnk");
    std::filesystem::create_directory(test::DriveC() + "/folder");
    test::WriteHostFile(test::DriveC() + "/no.lnk", "no link");
    struct Row {
        Text member;
        int number;
        std::function<void()> act;
    };
    const Row rows[] = {{"Target", 53, [&] { link.SetTarget("C:\\none"); }},
                        {"Target", 53, [&] { link.SetTarget("C:\\bin"); }},
                        {"Target", 53, [&] { link.SetTarget(""); }},
                        {"Save", 53, [&] { link.Save(""); }},
                        {"Save", 53, [&] { link.Save(kNul + "x"); }},
                        {"Save", 3, [&] { link.Save("C:\\none\\x.lnk"); }},
                        {"Save", 5, [&] { link.Save("C:\\folder"); }},
                        {"Resolve", 2, [&] { link.Resolve("C:\\none.lnk", 0, 0, 0); }},
                        {"Resolve", 11, [&] { link.Resolve("C:\\no.lnk", 0, 0, 0); }},
                        {"GetFullPath", 123, [] { cShellLink::GetFullPath(""); }},
                        {"GetFullPath", 206, [] { cShellLink::GetFullPath(Text(300, 'n')); }}};
    for (const Row& row : rows) {
        const Text number = std::to_string(row.number), name = "cShellLink." + row.member;
        Text line = name, raised = number;
        line.append(": ").append(number);
        raised.append(" ").append(name).append(": ");
        raised += row.number == 53 ? "File not found" : cShellLink::WinApiError(row.number);
        const test::RecordedErrors reported;
        EXPECT_EQ(test::ErrorOf(row.act), raised);
        EXPECT_EQ(reported.lines, std::vector{line});
    }
    EXPECT_EQ(link.Target() + link.SavedPath(), "C:\\bin\\t.exeC:\\good.lnk");
    EXPECT_NE(cShellLink::WinApiError(193).find("%1"), Text::npos);  // nothing is filled in
    EXPECT_EQ(cShellLink::GetFullPath("C:\\a\\..\\b"), "C:\\b");
}

}  // namespace
}  // namespace rvl
