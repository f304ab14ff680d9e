#include "platform/registry.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <thread>

#include "platform/error.h"
#include "platform/identity.h"
#include "platform/sqlite.h"
#include "tests/temporary_root.h"

namespace rvl::platform {
namespace {

using enum RegistryRoot;
using Names = std::vector<Text>;

template <class Action>
std::int32_t ErrorOf(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Number();
    }
    return 0;
}

TEST(Registry, GivesBackWhatWasWritten) {
    std::vector<RegistryValue> values{Text(), Text("12"), Text("a\0b", 3), Text("\xC4 \xFF"),
                                      0u,     4294967295u};
    for (const Text& text : {Text(), Text("a\0b", 3), Text("%A%\\\xC4")})
        values.insert(values.end(), {ExpandableText{text}, text});
    for (const RegistryValue& value : values) {
        WriteRegistry(LocalMachine, "Software\\Round", "Value", value);
        EXPECT_EQ(ReadRegistry(LocalMachine, "SOFTWARE\\ROUND\\", "VALUE"), value);
    }
    EXPECT_EQ(ReadRegistry(LocalMachine, "Software\\Round", "Other"), std::nullopt);
    EXPECT_EQ(ReadRegistry(LocalMachine, "Software\\None", "Value"), std::nullopt);
}

TEST(Registry, NamesHaveNoCaseAndKeepTheirFirstSpelling) {
    const Text umlauts =
                   "Gr\xF6\xDF"
                   "e",
               capitals =
                   "GR\xD6\xDF"
                   "E";
    WriteRegistry(LocalMachine, "Spelling\\" + umlauts, umlauts, Text("one"));
    WriteRegistry(LocalMachine, "SPELLING\\" + capitals, capitals, Text("two"));
    WriteRegistry(LocalMachine, "Spelling\\" + umlauts, "", Text("default"));
    EXPECT_EQ(RegistrySubkeys(LocalMachine, "spelling"), Names{umlauts});
    EXPECT_EQ(RegistryValueNames(LocalMachine, "spelling\\" + capitals), (Names{"", umlauts}));
    EXPECT_EQ(ReadRegistry(LocalMachine, "spelling\\" + umlauts, umlauts), RegistryValue(Text("two")));
}

TEST(Registry, KeysComeWithTheirLevelsAndGoWithAllBelow) {
    DeleteRegistryKey(LocalMachine, "Tree");
    CreateRegistryKey(LocalMachine, "Tree\\A\\B\\C");
    WriteRegistry(LocalMachine, "Tree\\A\\B", "Value", 1u);
    CreateRegistryKey(LocalMachine, "Tree\\AB");
    EXPECT_TRUE(RegistryKeyExists(LocalMachine, "TREE\\a\\b"));
    EXPECT_TRUE(DeleteRegistryKey(LocalMachine, "Tree\\A"));
    EXPECT_FALSE(DeleteRegistryKey(LocalMachine, "Tree\\A"));
    EXPECT_FALSE(RegistryKeyExists(LocalMachine, "Tree\\A\\B\\C"));
    EXPECT_EQ(RegistrySubkeys(LocalMachine, "Tree"), Names{"AB"});
    CreateRegistryKey(LocalMachine, "Tree\\A\\B");
    WriteRegistry(LocalMachine, "Tree\\Last", "Value", 1u);
    EXPECT_TRUE(DeleteRegistryKey(LocalMachine, "Tree\\Last"));
    CreateRegistryKey(LocalMachine, "Tree\\Last");
    for (const char* key : {"Tree\\A\\B", "Tree\\Last"})
        EXPECT_EQ(ReadRegistry(LocalMachine, key, "Value"), std::nullopt) << key;
}

TEST(Registry, DeletesValues) {
    WriteRegistry(LocalMachine, "Deleting", "Value", 1u);
    EXPECT_TRUE(DeleteRegistryValue(LocalMachine, "deleting", "VALUE"));
    EXPECT_FALSE(DeleteRegistryValue(LocalMachine, "Deleting", "Value"));
    EXPECT_FALSE(DeleteRegistryValue(LocalMachine, "Missing", "Value"));
    EXPECT_TRUE(RegistryKeyExists(LocalMachine, "Deleting"));
}

TEST(Registry, TwoRootsLieBelowOthers) {
    WriteRegistry(ClassesRoot, "CLSID\\{1}", "", Text("class"));
    EXPECT_EQ(ReadRegistry(LocalMachine, "SOFTWARE\\Classes\\CLSID\\{1}", ""), RegistryValue(Text("class")));
    WriteRegistry(CurrentUser, "Software\\X", "Value", 7u);
    EXPECT_EQ(ReadRegistry(Users, UserName() + "\\Software\\X", "Value"), RegistryValue(7u));
}

TEST(Registry, RefusesWhatIsNoKey) {
    for (const RegistryRoot root : {ClassesRoot, CurrentUser, LocalMachine, Users}) {
        EXPECT_TRUE(RegistryKeyExists(root, "\\"));
        EXPECT_EQ(ErrorOf([&] { DeleteRegistryKey(root, "\\"); }), 5);
    }
    EXPECT_EQ(ErrorOf([] { ReadRegistry(RegistryRoot{1}, "Key", "Value"); }), 6);
}

TEST(Registry, WaitsForWhoeverHoldsTheFile) {
    WriteRegistry(LocalMachine, "Waiting", "Value", 1u);
    SqliteConnection other((test::g_temporaryRoot.Folder() / "registry.db").string(),
                           SqliteConnection::Missing::Fail, std::chrono::seconds(5));
    other.Execute("BEGIN EXCLUSIVE");
    std::jthread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        other.Execute("COMMIT");
    });
    WriteRegistry(LocalMachine, "Waiting", "Value", 2u);
    release.join();
    EXPECT_EQ(ReadRegistry(LocalMachine, "Waiting", "Value"), RegistryValue(2u));
}

// The rest runs in processes of their own: this program again, with one of the tests that are disabled here.

pid_t StartChild(const std::string& test, const std::filesystem::path& root, const std::string& argument) {
    const pid_t child = fork();
    if (child != 0) return child;
    setenv("RVL_ROOT", root.c_str(), 1);
    setenv("RVL_TEST_CHILD", argument.c_str(), 1);
    const std::string filter = "--gtest_filter=RegistryChild.DISABLED_" + test;
    execl("/proc/self/exe", "registry_child", "--gtest_also_run_disabled_tests", "--gtest_brief=1",
          filter.c_str(), nullptr);
    _exit(127);
}

int WaitForChild(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string ChildArgument() {
    const char* argument = std::getenv("RVL_TEST_CHILD");
    return argument != nullptr ? argument : "";
}

std::filesystem::path FreshRoot(const char* name) {
    std::filesystem::path root = test::g_temporaryRoot.Folder() / name;
    std::filesystem::create_directories(root);
    return root;
}

constexpr std::uint32_t kValuesPerChild = 50;

TEST(RegistryChild, DISABLED_WritesSomeValues) {
    for (std::uint32_t index = 0; index < kValuesPerChild; ++index)
        WriteRegistry(LocalMachine, "Shared\\Key", ChildArgument() + std::to_string(index), index);
}

TEST(RegistryChild, DISABLED_WritesForEver) {
    const int acknowledge = std::stoi(ChildArgument());
    for (std::uint32_t index = 1;; ++index) {
        WriteRegistry(LocalMachine, "Killed", "Value", index);
        if (write(acknowledge, &index, sizeof index) < 0) return;
    }
}

TEST(RegistryChild, DISABLED_FindsItDamaged) {
    EXPECT_EQ(ErrorOf([] { ReadRegistry(LocalMachine, "Key", "Value"); }), 1015);
    EXPECT_EQ(ErrorOf([] { WriteRegistry(LocalMachine, "Key", "Value", 1u); }), 1015);
}

TEST(Registry, SeveralProcessesMayBeginAtOnce) {
    const std::filesystem::path root = FreshRoot("several");
    std::vector<pid_t> children;
    for (const char* name : {"a", "b", "c", "d"})
        children.push_back(StartChild("WritesSomeValues", root, name));
    for (const pid_t child : children)
        EXPECT_EQ(WaitForChild(child), 0);
    SqliteConnection store((root / "registry.db").string(), SqliteConnection::Missing::Fail,
                           std::chrono::seconds(5));
    SqliteStatement count = store.Prepare(
        "SELECT Count(*) FROM RegistryValues JOIN RegistryKeys USING(KeyID) WHERE RegistryKeys.Name = 'Key'");
    ASSERT_TRUE(count.Step());
    EXPECT_EQ(count.Column(0), SqliteValue(std::int64_t{4 * kValuesPerChild}));
}

TEST(Registry, SurvivesAWriterThatIsKilled) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = StartChild("WritesForEver", test::g_temporaryRoot.Folder(), std::to_string(ends[1]));
    close(ends[1]);
    std::uint32_t acknowledged = 0;
    while (acknowledged < 30 && read(ends[0], &acknowledged, sizeof acknowledged) > 0) {
    }
    kill(child, SIGKILL);
    EXPECT_EQ(WaitForChild(child), -1);
    while (read(ends[0], &acknowledged, sizeof acknowledged) > 0) {
    }
    close(ends[0]);
    ASSERT_GE(acknowledged, 30u);
    const auto value = ReadRegistry(LocalMachine, "Killed", "Value");
    ASSERT_TRUE(value);
    EXPECT_GE(std::get<std::uint32_t>(*value), acknowledged);
    WriteRegistry(LocalMachine, "Killed", "Value", 0u);
}

TEST(Registry, SaysThatItIsDamaged) {
    const std::filesystem::path root = FreshRoot("damaged");
    std::ofstream(root / "registry.db") << std::string(10000, 'x');
    EXPECT_EQ(WaitForChild(StartChild("FindsItDamaged", root, "-")), 0);
}

}  // namespace
}  // namespace rvl::platform
