#include "platform/registry.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/error.h"
#include "tests/platform/registry_error.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

using enum RegistryRoot;
using test::RegistryErrorOf;
using Names = std::vector<Text>;

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
    WriteRegistry(LocalMachine, "Software\\Spelling\\" + umlauts, umlauts, Text("one"));
    WriteRegistry(LocalMachine, "Software\\SPELLING\\" + capitals, capitals, Text("two"));
    WriteRegistry(LocalMachine, "Software\\Spelling\\" + umlauts, "", Text("default"));
    EXPECT_EQ(RegistrySubkeys(LocalMachine, "Software\\spelling"), Names{umlauts});
    EXPECT_EQ(RegistryValueNames(LocalMachine, "Software\\spelling\\" + capitals), (Names{"", umlauts}));
    EXPECT_EQ(ReadRegistry(LocalMachine, "Software\\spelling\\" + umlauts, umlauts),
              RegistryValue(Text("two")));
}

TEST(Registry, KeysComeWithTheirLevelsAndGoWithAllBelow) {
    DeleteRegistryKey(LocalMachine, "Software\\Tree");
    CreateRegistryKey(LocalMachine, "Software\\Tree\\A\\B\\C");
    WriteRegistry(LocalMachine, "Software\\Tree\\A\\B", "Value", 1u);
    CreateRegistryKey(LocalMachine, "Software\\Tree\\AB");
    EXPECT_TRUE(RegistryKeyExists(LocalMachine, "Software\\TREE\\a\\b"));
    EXPECT_TRUE(DeleteRegistryKey(LocalMachine, "Software\\Tree\\A"));
    EXPECT_FALSE(DeleteRegistryKey(LocalMachine, "Software\\Tree\\A"));
    EXPECT_FALSE(RegistryKeyExists(LocalMachine, "Software\\Tree\\A\\B\\C"));
    EXPECT_EQ(RegistrySubkeys(LocalMachine, "Software\\Tree"), Names{"AB"});
    CreateRegistryKey(LocalMachine, "Software\\Tree\\A\\B");
    WriteRegistry(LocalMachine, "Software\\Tree\\Last", "Value", 1u);
    EXPECT_TRUE(DeleteRegistryKey(LocalMachine, "Software\\Tree\\Last"));
    CreateRegistryKey(LocalMachine, "Software\\Tree\\Last");
    for (const char* key : {"Software\\Tree\\A\\B", "Software\\Tree\\Last"})
        EXPECT_EQ(ReadRegistry(LocalMachine, key, "Value"), std::nullopt) << key;
}

TEST(Registry, DeletesValues) {
    WriteRegistry(LocalMachine, "Software\\Deleting", "Value", 1u);
    EXPECT_TRUE(DeleteRegistryValue(LocalMachine, "Software\\deleting", "VALUE"));
    EXPECT_FALSE(DeleteRegistryValue(LocalMachine, "Software\\Deleting", "Value"));
    EXPECT_FALSE(DeleteRegistryValue(LocalMachine, "Software\\Missing", "Value"));
    EXPECT_TRUE(RegistryKeyExists(LocalMachine, "Software\\Deleting"));
}

TEST(Registry, TwoRootsLieBelowOthers) {
    WriteRegistry(ClassesRoot, "CLSID\\{1}", "", Text("class"));
    EXPECT_EQ(ReadRegistry(LocalMachine, "SOFTWARE\\Classes\\CLSID\\{1}", ""), RegistryValue(Text("class")));
    WriteRegistry(CurrentUser, "Software\\X", "Value", 7u);
    const Names users = RegistrySubkeys(Users, "");
    EXPECT_TRUE(std::any_of(users.begin(), users.end(), [](const Text& user) {
        return ReadRegistry(Users, user + "\\Software\\X", "Value") == RegistryValue(7u);
    }));
}

TEST(Registry, RefusesWhatIsNoKey) {
    for (const RegistryRoot root : {ClassesRoot, CurrentUser, LocalMachine, Users}) {
        EXPECT_TRUE(RegistryKeyExists(root, "\\"));
        EXPECT_EQ(RegistryErrorOf([&] { DeleteRegistryKey(root, "\\"); }), 5);
    }
    EXPECT_EQ(RegistryErrorOf([] { ReadRegistry(RegistryRoot{1}, "Key", "Value"); }), 6);
}

}  // namespace
}  // namespace rvl::platform
