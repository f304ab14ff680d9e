#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/error.h"
#include "platform/sqlite.h"
#include "tests/support/workstation.h"

namespace rvl::test {

/// A test with a folder of its own on drive C: of the temporary root.
class FolderTest : public ::testing::Test {
 protected:
    FolderTest() { std::filesystem::create_directories(HostFolder()); }
    ~FolderTest() override { std::filesystem::remove_all(HostFolder()); }

    static std::filesystem::path HostFolder() { return HostFile("C:\\test"); }
    static Text Path(const Text& name) { return "C:\\test\\" + name; }

    static void WriteFile(const std::string& name, const std::string& content) {
        std::ofstream(HostFolder() / name, std::ios::binary) << content;
    }
};

inline std::string ReadSchema() {
    std::ostringstream schema;
    schema << std::ifstream(RVL_SCHEMA).rdbuf();
    return schema.str();
}

/// Another program's connection to a database of the system.
inline platform::SqliteConnection OtherConnection(const Text& path) {
    using platform::SqliteConnection;
    return {platform::SqliteFileName(path), SqliteConnection::Missing::Create, std::chrono::seconds(5)};
}

/// An empty database, as the build makes the template.
inline void CreateDatabaseFile(const Text& path) {
    OtherConnection(path).ExecuteScript(ReadSchema());
}

template <class Action>
std::int32_t ErrorOf(Action action) {
    try {
        action();
    } catch (const Error& error) {
        EXPECT_FALSE(error.Description().empty()) << error.Number();
        return error.Number();
    }
    return 0;
}

}  // namespace rvl::test
