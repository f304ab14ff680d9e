#include "platform/files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/file_handle.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

class FilesTest : public testing::Test {
 protected:
    FilesTest() {
        for (const char* name : {"a.txt", "B.TXT", "ab.doc", "noext", "Sub\\Same", "\xC9t \xFF"})
            test::WriteHostFile(test::HostFile(Text("C:\\Dir\\") + name), "content");
    }
    ~FilesTest() override { test::EmptyDriveC(); }

    const std::string c = test::DriveC();
};

TEST_F(FilesTest, Wildcards) {
    const std::pair<Text, Text> rows[] = {{"C:\\dir\\*.*", ".|..|a.txt|ab.doc|B.TXT|noext|Sub|\xC9t \xFF|"},
                                          {"c:/DIR/?.TxT", "a.txt|B.TXT|"},
                                          {"C:\\Dir\\*b*", "ab.doc|B.TXT|Sub|"},
                                          {"C:\\Dir\\a*t*t", "a.txt|"},
                                          {"C:\\Dir\\\xE9*", "\xC9t \xFF|"},
                                          {"C:\\Dir\\SUB", "Sub|"},
                                          {"C:\\Dir\\Sub\\", ""},
                                          {"C:\\Dir\\a.txt\\*", ""},
                                          {"D:\\*", ""}};
    for (const auto& [pattern, expected] : rows) {
        Text names;
        for (const DirectoryEntry& entry : FindEntries(pattern))
            names += entry.name + "|";
        EXPECT_EQ(names, expected) << pattern;
    }
}

TEST_F(FilesTest, CopyAndOpen) {
    for (const char* self : {"C:\\Dir\\a.txt", "c:/DIR/A.TXT"})
        EXPECT_NE(CopyFileTo(self, "C:\\Dir\\a.txt"), 0) << self;
    EXPECT_EQ(CopyFileTo("C:\\Dir\\a.txt", "C:\\Dir\\new"), 0);
    for (const char* name : {"/Dir/a.txt", "/Dir/new"})
        EXPECT_EQ(test::ReadHostFile(c + name), "content");
    const std::pair<const char*, int> rows[] = {
        {"C:\\none", 2}, {"C:\\none\\x", 3}, {"Q:\\x", test::CodeOfNoDrive()}, {"", 3}};
    for (const auto& [path, code] : rows)
        EXPECT_EQ(CopyFileTo(path, "C:\\x"), code);
    for (const char* path : {"C:\\Dir", "C:\\"})
        for (const auto access :
             {FileAccess::Read, FileAccess::Write, FileAccess::ReadWrite, FileAccess::Append})
            for (const auto how : {FileDisposition::OpenExisting, FileDisposition::CreateAlways})
                EXPECT_NE(FileHandle().Open(path, access, FileShare::ReadWrite, how), 0) << path;
}

TEST_F(FilesTest, PathsThatAreLong) {
    Text folder = "C:\\Dir";
    for (int level = 0; level < 5; ++level)
        EXPECT_EQ(MakeDirectory(folder += "\\" + Text(100, static_cast<char>('a' + level))), 0);
    const Text file = folder + "\\file", moved = folder + "/moved";
    EXPECT_EQ(CopyFileTo("C:\\Dir\\a.txt", file), 0);
    EXPECT_EQ(MoveFileTo(file, moved), 0);
    EXPECT_TRUE(DirectoryExists(folder) && FileExists(moved) && !FileExists(file) &&
                HasFilesBelow("C:\\Dir\\" + Text(100, 'a')));
    std::int64_t bytes = 0;
    EXPECT_EQ(FileLength(moved, bytes) + (bytes != 7), 0);
    ASSERT_EQ(FindEntries(folder + "\\m*").size(), 1U);
    EXPECT_EQ(FileHandle().Open(moved, FileAccess::Read, FileShare::Read, FileDisposition::OpenExisting), 0);
    EXPECT_EQ(RemoveDirectoryAt(folder), 145);
    EXPECT_EQ(DeleteFileAt(moved), 0);
    EXPECT_EQ(RemoveDirectoryAt(folder), 0);
}

}  // namespace
}  // namespace rvl::platform
