#include <gtest/gtest.h>
#include <unistd.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/sqlite.h"
#include "tests/platform/registry_error.h"
#include "tests/support/child_process.h"
#include "tests/support/posix/workstation.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

using enum RegistryRoot;

TEST(RegistryFile, WaitsForWhoeverHoldsTheFile) {
    WriteRegistry(LocalMachine, "Waiting", "Value", 1u);
    SqliteConnection other(test::Root() + "/registry.db", SqliteConnection::Missing::Fail,
                           std::chrono::seconds(5));
    other.Execute("BEGIN EXCLUSIVE");
    std::jthread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        other.Execute("COMMIT");
    });
    WriteRegistry(LocalMachine, "Waiting", "Value", 2u);
    release.join();
    EXPECT_EQ(ReadRegistry(LocalMachine, "Waiting", "Value"), RegistryValue(2u));
}

/// In the workstation root that is given.
class RootedChild : public test::ChildProcess {
 public:
    RootedChild(const std::string& test, const std::string& root, const std::string& argument)
        : ChildProcess((test::SetEnvironment("RVL_ROOT", root), "RegistryChild.DISABLED_" + test), argument) {
        test::SetEnvironment("RVL_ROOT", test::Root());
    }
};

std::filesystem::path FreshRoot(const char* name) {
    std::filesystem::path root = test::Root() + "/" + name;
    std::filesystem::create_directories(root);
    return root;
}

constexpr std::uint32_t kValuesPerChild = 50;

TEST(RegistryChild, DISABLED_WritesSomeValues) {
    for (std::uint32_t index = 0; index < kValuesPerChild; ++index)
        WriteRegistry(LocalMachine, "Shared\\Key", test::ChildProcess::Argument() + std::to_string(index),
                      index);
}

TEST(RegistryChild, DISABLED_WritesForEver) {
    const int acknowledge = std::stoi(test::ChildProcess::Argument());
    for (std::uint32_t index = 1;; ++index) {
        WriteRegistry(LocalMachine, "Killed", "Value", index);
        if (write(acknowledge, &index, sizeof index) < 0) return;
    }
}

TEST(RegistryChild, DISABLED_FindsItDamaged) {
    EXPECT_EQ(test::RegistryErrorOf([] { ReadRegistry(LocalMachine, "Key", "Value"); }), 1015);
    EXPECT_EQ(test::RegistryErrorOf([] { WriteRegistry(LocalMachine, "Key", "Value", 1u); }), 1015);
}

TEST(RegistryFile, SeveralProcessesMayBeginAtOnce) {
    const std::filesystem::path root = FreshRoot("several");
    std::deque<RootedChild> children;
    for (const char* name : {"a", "b", "c", "d"})
        children.emplace_back("WritesSomeValues", root, name);
    for (RootedChild& child : children)
        EXPECT_EQ(child.Wait(), 0);
    SqliteConnection store((root / "registry.db").string(), SqliteConnection::Missing::Fail,
                           std::chrono::seconds(5));
    SqliteStatement count = store.Prepare(
        "SELECT Count(*) FROM RegistryValues JOIN RegistryKeys USING(KeyID) WHERE RegistryKeys.Name = 'Key'");
    ASSERT_TRUE(count.Step());
    EXPECT_EQ(count.Column(0), SqliteValue(std::int64_t{4 * kValuesPerChild}));
}

TEST(RegistryFile, SurvivesAWriterThatIsKilled) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    test::ChildProcess child("RegistryChild.DISABLED_WritesForEver", std::to_string(ends[1]));
    close(ends[1]);
    std::uint32_t acknowledged = 0;
    while (acknowledged < 30 && read(ends[0], &acknowledged, sizeof acknowledged) > 0) {
    }
    child.Kill();
    EXPECT_EQ(child.Wait(), test::ChildProcess::kKilled);
    while (read(ends[0], &acknowledged, sizeof acknowledged) > 0) {
    }
    close(ends[0]);
    ASSERT_GE(acknowledged, 30u);
    const auto value = ReadRegistry(LocalMachine, "Killed", "Value");
    ASSERT_TRUE(value);
    EXPECT_GE(std::get<std::uint32_t>(*value), acknowledged);
    WriteRegistry(LocalMachine, "Killed", "Value", 0u);
}

TEST(RegistryFile, SaysThatItIsDamaged) {
    const std::filesystem::path root = FreshRoot("damaged");
    std::ofstream(root / "registry.db") << std::string(10000, 'x');
    EXPECT_EQ(RootedChild("FindsItDamaged", root, "").Wait(), 0);
}

}  // namespace
}  // namespace rvl::platform
