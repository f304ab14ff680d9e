#include "platform/posix/host_path.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/file_handle.h"
#include "platform/files.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

class HostPathTest : public testing::Test {
 protected:
    HostPathTest() {
        for (const char* name : {"a.txt", "Sub/Same", "Sub/SAME", "\xC3\x89t \xC3\xBF"})
            test::WriteHostFile(c + "/Dir/" + name, "content");
    }
    ~HostPathTest() override { test::EmptyDriveC(); }

    const std::string c = test::DriveC();
};

TEST_F(HostPathTest, OfThePathsOfTheSystem) {
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

TEST_F(HostPathTest, WhatIsNoFileNeitherOpensNorHangs) {
    std::filesystem::create_symlink(c + "/Dir/a.txt", c + "/Dir/link");
    EXPECT_NE(CopyFileTo("C:\\Dir\\link", "C:\\Dir\\a.txt"), 0);
    mkfifo((c + "/fifo").c_str(), 0666);
    for (const char* path : {"C:\\fifo", "Z:\\dev\\null"})
        for (const auto access :
             {FileAccess::Read, FileAccess::Write, FileAccess::ReadWrite, FileAccess::Append})
            for (const auto how : {FileDisposition::OpenExisting, FileDisposition::CreateAlways})
                EXPECT_NE(FileHandle().Open(path, access, FileShare::ReadWrite, how), 0) << path;
}

}  // namespace
}  // namespace rvl::platform
