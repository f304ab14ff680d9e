#include "platform/access_database.h"

#include <gtest/gtest.h>

#include "tests/support/jet_database.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

TEST(AccessDatabase, VersionOfADatabase) {
    const std::string path = test::DriveC() + "/fe/version.mdb";
    for (const std::string& content :
         {std::string(), std::string("SQLite format 3"), test::JetDatabase("09.50")}) {
        test::WriteHostFile(path, content);
        const Text version = DatabaseAccessVersion("C:\\FE\\Version.mdb");
        EXPECT_TRUE(version.empty() || content.size() > 20) << version;
        EXPECT_EQ(test::ReadHostFile(path), content);
    }
    EXPECT_EQ(DatabaseAccessVersion("C:\\fe\\none.mdb") + DatabaseAccessVersion("C:\\fe"), "");
    if (DatabaseAccessVersion("C:\\fe\\version.mdb").empty())
        GTEST_SKIP() << "Wine has no database engine (DAO)";
    EXPECT_EQ(DatabaseAccessVersion("C:\\fe\\version.mdb"), "09.50");
}

}  // namespace
}  // namespace rvl::platform
