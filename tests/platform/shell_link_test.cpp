#include "platform/shell_link.h"

#include "platform/full_path.h"
#include "tests/platform/shell_link_fixture.h"

namespace rvl::platform {
namespace {

using test::Fields;
using test::kHostLink;
using test::kLink;
using test::ShellLinkTest;

TEST_F(ShellLinkTest, ReadsWhatItWrote) {
    for (const ShellLink& link :
         {full, ShellLink{}, ShellLink{"", "", "", Text(1000, '\xFE'), "", 70000, 3}}) {
        ASSERT_EQ(WriteShellLink(kLink, link), 0);
        ShellLink read = full;
        EXPECT_EQ(ReadShellLink(kLink, read), 0);
        EXPECT_TRUE(Fields(read) == Fields(link)) << link.description.size();
    }
    ShellLink cut = full, read;
    for (Text* text :
         {&cut.target, &cut.arguments, &cut.workingDirectory, &cut.description, &cut.iconLocation})
        text->append("\0z", 2);
    EXPECT_EQ(WriteShellLink(kLink, cut) + ReadShellLink(kLink, read), 0);
    EXPECT_EQ(Fields(read), Fields(full));
}

TEST_F(ShellLinkTest, Failures) {
    ShellLink link;
    ASSERT_EQ(WriteShellLink(kLink, full), 0);
    EXPECT_EQ(ResolveShellLink(kLink, 0, 0, 0, link), 0);
    std::filesystem::remove(test::HostFile(full.target));
    for (const auto& [path, code] : std::initializer_list<std::pair<Text, int>>{
             {kLink, 2}, {"C:\\no.lnk", 2}, {"C:\\no\\x.lnk", 3}, {"C:\\Desk", 5}, {"", 3}})
        EXPECT_EQ(ResolveShellLink(path, 0, 0, 0, link), code) << path;
    for (const auto& [path, code] : std::initializer_list<std::pair<Text, int>>{
             {"C:\\no\\x.lnk", 3}, {"C:\\Desk", 5}, {"Q:\\x.lnk", test::CodeOfNoDrive()}, {"", 3}})
        EXPECT_EQ(WriteShellLink(path, full), code) << path;
    EXPECT_EQ(WriteShellLink(kLink, {"", Text(65536, 'a'), "", "", "", 0, 1}), 87);
    EXPECT_EQ(WriteShellLink(kLink, {"C:\\" + Text(300, 'n'), "", "", "", "", 0, 1}), 206);

    for (const char* folder : {"/Desk", "/"})  // no temporary file stays
        for (const auto& entry : std::filesystem::directory_iterator(c + folder))
            EXPECT_NE(entry.path().extension(), ".tmp");
}

TEST_F(ShellLinkTest, FullPaths) {
    const std::tuple<Text, int, Text> rows[] = {{"c:/a//.\\b\\..\\\xC9 c\\", 0, "c:\\a\\\xC9 c\\"},
                                                {"D:\\..\\..\\x", 0, "D:\\x"},
                                                {"C:", 0, "C:\\"},
                                                {"\\\\srv\\sh\\..\\..\\x/y", 0, "\\\\srv\\sh\\x\\y"},
                                                {"C:\\" + Text(256, 'n'), 0, "C:\\" + Text(256, 'n')},
                                                {"C:\\" + Text(257, 'n'), 206, ""},
                                                {"C:\\" + Text(300, 'n') + "\\..\\a", 0, "C:\\a"},
                                                {Text("C:\\a\0b", 6), 123, ""},
                                                {"", 123, ""}};
    for (const auto& [path, code, expected] : rows) {
        Text absolute;
        EXPECT_EQ(FullPath(path, absolute), code) << path;
        EXPECT_EQ(absolute, expected);
    }
}

}  // namespace
}  // namespace rvl::platform
