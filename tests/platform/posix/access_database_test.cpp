#include "platform/access_database.h"

#include <gtest/gtest.h>

#include "tests/support/jet_database.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

TEST(AccessDatabase, VersionOfADatabase) {
    const std::string database = test::JetDatabase("09.50");
    std::string unnamed = database;
    unnamed[unnamed.find(std::string("A\0c\0c", 5))] = 'B';
    const std::pair<std::string, Text> rows[] = {
        {database, "09.50"},
        {test::JetDatabase("07.53"), "07.53"},
        {unnamed, ""},
        {database.substr(0, 3 * 4096), ""},  // cut off
        {std::string(3 * 4096, '\0').replace(0, 4096, database, 0, 4096), ""},
        {"SQLite format 3", ""},
        {"", ""}};
    const std::string path = test::DriveC() + "/fe/version.mdb";
    testing::internal::CaptureStderr();
    for (const auto& [content, version] : rows) {
        test::WriteHostFile(path, content);
        EXPECT_EQ(DatabaseAccessVersion("C:\\FE\\Version.mdb"), version);
        EXPECT_EQ(test::ReadHostFile(path), content);
    }
    EXPECT_EQ(DatabaseAccessVersion("C:\\fe\\none.mdb") + DatabaseAccessVersion("C:\\fe"), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

/// Whatever stands in a damaged file, this process goes on.
TEST(AccessDatabase, DamagedDatabases) {
    const std::string database = test::JetDatabase("09.50");
    const std::string path = test::DriveC() + "/fe/damaged.mdb";
    for (std::size_t at = 0; at < database.size(); at += 97) {
        std::string damaged = database;
        damaged.replace(at, std::min<std::size_t>(16, damaged.size() - at), 16, '\xfe');
        test::WriteHostFile(path, damaged);
        EXPECT_LE(DatabaseAccessVersion("C:\\fe\\damaged.mdb").size(), 4096U);
    }
}

}  // namespace
}  // namespace rvl::platform
