#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/error.h"
#include "platform/sqlite.h"
#include "tests/temporary_root.h"

namespace rvl::test {

/// A test with a folder of its own on drive C: of the temporary root.
class FolderTest : public ::testing::Test {
 protected:
    FolderTest() { std::filesystem::create_directories(HostFolder()); }
    ~FolderTest() override { std::filesystem::remove_all(HostFolder()); }

    static std::filesystem::path HostFolder() { return g_temporaryRoot.Folder() / "drive_c/test"; }
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

/// Runs an action in a process of its own, which ends when the action does.
template <class Action>
pid_t StartProcess(Action action) {
    const pid_t child = fork();
    if (child != 0) return child;
    action();
    _exit(0);
}

}  // namespace rvl::test
