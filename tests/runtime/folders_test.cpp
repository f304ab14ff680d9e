#include "runtime/folders.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "runtime/folder_paths.h"
#include "runtime/system_information.h"
#include "tests/support/workstation.h"

namespace rvl {

TEST(Folders, CreateLongDirectory) {
    constexpr int kAnyFailure = -1;
    test::WriteHostFile(test::DriveC() + "/Old/file", "");
    const std::tuple<Text, int, Text> rows[] = {{"C:\\a\\b\\c\\", 0, "a\\b\\c"},
                                                {"C:/f//g\\\\h", 0, "f\\g\\h"},
                                                {"C:\\OLD\\new \xE9", 0, "Old\\new \xE9"},
                                                {"C:\\Old\\FILE\\x\\y", 183, ""},
                                                {"C:\\" + Text(300, 'n') + "\\x", kAnyFailure, ""},
                                                {"Q:\\a\\b", 3, ""},
                                                {"", 3, ""}};
    for (const auto& [path, number, host] : rows) {
        ErrorRecord problem;
        EXPECT_EQ(CreateLongDirectory(path, &problem), number == 0) << path;
        EXPECT_TRUE(problem.Number == number || (number == kAnyFailure && problem.Number != 0))
            << path << ": " << problem.Number;
        EXPECT_TRUE(std::filesystem::is_directory(test::HostFile("C:\\" + host))) << host;
    }
    test::WriteHostFile(test::DriveC() + "/large", "x");
    std::filesystem::resize_file(test::DriveC() + "/large", 5000000000);
    EXPECT_EQ(FileLen("C:\\LARGE"), 5000000000);
    EXPECT_TRUE(test::ErrorOf([] { FileLen("C:\\none"); }).starts_with("53 "));
    test::EmptyDriveC();
}

TEST(Folders, Workstation) {
    EXPECT_EQ(CommonAppDataPath() + AllUsersPath() + ProgramFilesPath(),
              "C:\\ProgramData\\C:\\C:\\Program Files\\");
    EXPECT_TRUE(std::regex_match(OSVersionString(), std::regex(R"(Windows NT \d+\.\d+ \(Build \d+\) .+)")));
}

}  // namespace rvl
