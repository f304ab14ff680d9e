#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/file_handle.h"
#include "platform/posix/host_path.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

class FilesTest : public testing::Test {
 protected:
    FilesTest() {
        for (const char* name :
             {"a.txt", "B.TXT", "ab.doc", "noext", "Sub/Same", "Sub/SAME", "\xC3\x89t \xC3\xBF"})
            test::WriteHostFile(c + "/Dir/" + name, "content");
    }
    ~FilesTest() override { test::EmptyDriveC(); }

    const std::string c = test::DriveC();
};

TEST_F(FilesTest, HostPaths) {
    const std::pair<Text, std::string> rows[] = {{"c:", c},
                                                 {"c:/DIR\\\\.\\SUB/new\\Deep\\", c + "/Dir/Sub/new/Deep"},
                                                 {"\\dir\\sub\\SAME", c + "/Dir/Sub/SAME"},
                                                 {"C:\\dir\\\xE9T \xFF", c + "/Dir/\xC3\x89t \xC3\xBF"},
                                                 {"C:\\dir\\..\\..\\../Dir", c + "/Dir"},
                                                 {"\\..\\x", c + "/x"},
                                                 {"z:\\ETC/Passwd", "/etc/passwd"},
                                                 {"Z:\\..\\..", "/"},
                                                 {"/etc/x", "/etc/x"},
                                                 {"x\\y", std::filesystem::current_path().string() + "/x/y"},
                                                 {"D:\\x", ""},
                                                 {"\\\\server\\share\\x", ""},
                                                 {Text("C:\\a\0b", 6), ""}};
    for (const auto& [path, host] : rows)
        EXPECT_EQ(HostPath(path), host) << path;
    for (const Text path : {"C:\\Dir\\Sub", "Z:\\etc\\passwd", "C:\\Dir\\\xC9t \xFF", "Z:\\"})
        EXPECT_EQ(WindowsPath(HostPath(path)), path);
    EXPECT_TRUE(WindowsPath(c + "2/x").starts_with("Z:\\"));  // beside the drive, not below it
}

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
    std::filesystem::create_symlink(c + "/Dir/a.txt", c + "/Dir/link");
    for (const char* self : {"C:\\Dir\\a.txt", "c:/DIR/A.TXT", "C:\\Dir\\link"})
        EXPECT_NE(CopyFileTo(self, "C:\\Dir\\a.txt"), 0) << self;
    EXPECT_EQ(CopyFileTo("C:\\Dir\\a.txt", "C:\\Dir\\new"), 0);
    for (const char* name : {"/Dir/a.txt", "/Dir/new"})
        EXPECT_EQ(test::ReadHostFile(c + name), "content");
    const std::pair<const char*, int> rows[] = {{"C:\\none", 2}, {"C:\\none\\x", 3}, {"Q:\\x", 3}, {"", 3}};
    for (const auto& [path, code] : rows)
        EXPECT_EQ(CopyFileTo(path, "C:\\x"), code);
    mkfifo((c + "/fifo").c_str(), 0666);  // what is no file neither opens nor hangs
    for (const char* path : {"C:\\Dir", "C:\\fifo", "Z:\\dev\\null"})
        for (const auto access :
             {FileAccess::Read, FileAccess::Write, FileAccess::ReadWrite, FileAccess::Append})
            for (const auto how : {FileDisposition::OpenExisting, FileDisposition::CreateAlways})
                EXPECT_NE(FileHandle().Open(path, access, FileShare::ReadWrite, how), 0) << path;
}

}  // namespace
}  // namespace rvl::platform
