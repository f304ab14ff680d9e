#include "runtime/registry_value.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

cRegistry MakeValue(RegistryType type) {
    cRegistry value;
    value.ClassKey = platform::RegistryRoot::CurrentUser;
    value.SectionKey = "Software\\Ravelin\\Client\\Test";
    value.ValueKey = "Value";
    value.ValueType = type;
    return value;
}

TEST(cRegistry, ReadsAndWritesAsItsType) {
    struct Case {
        RegistryVariant written;
        RegistryVariant asText;    ///< "default" where there is no such form
        RegistryVariant asNumber;  ///< 99 where there is no such form
    };
    const Case cases[] = {{Text("True"), Text("True"), 99u},
                          {Text("-12"), Text("-12"), 4294967284u},
                          {Text("4294967296"), Text("4294967296"), 99u},
                          {Text(), Text(), 99u},
                          {7u, Text("7"), 7u}};
    cRegistry text = MakeValue(RegistryType::String), number = MakeValue(RegistryType::Number);
    text.Default = Text("default");
    number.Default = 99u;
    for (const Case& stored : cases) {
        (std::holds_alternative<Text>(stored.written) ? text : number).SetValue(stored.written);
        EXPECT_EQ(text.Value(), stored.asText);
        EXPECT_EQ(number.Value(), stored.asNumber);
    }
    number.SetValue(Text("12"));
    EXPECT_EQ(std::get<std::uint32_t>(*platform::ReadRegistry(number.ClassKey, number.SectionKey, "value")),
              12u);
    EXPECT_THROW(number.SetValue(Text("twelve")), Error);
    EXPECT_THROW(text.SetValue({}), Error);
}

TEST(cRegistry, ExpandsTheTextsThatAreExpandable) {
    for (const auto& [name, text] : {std::pair{"RVL_TEST_ONE", "one %RVL_TEST_TWO%"},
                                     {"rvl_test_two", "2"},
                                     {"RVL_TEST_EMPTY", ""},
                                     {"RVL_TEST_WIDE", "\xE2\x82\xAC"}})
        test::SetEnvironment(name, text);
    const std::pair<Text, Text> rows[] = {{"%RVL_TEST_ONE%\\x", "one %RVL_TEST_TWO%\\x"},
                                          {"%Rvl_Test_Two%%RVL_TEST_EMPTY%3", "23"},
                                          {"a%RVL_TEST_NONE%rvl_test_two%%", "a%RVL_TEST_NONE2%"},
                                          {"100% %% %RVL_TEST_WIDE%", "100% %% %RVL_TEST_WIDE%"},
                                          {"", ""}};
    cRegistry value = MakeValue(RegistryType::ExpandString), text = MakeValue(RegistryType::String);
    for (const auto& [stored, expanded] : rows) {
        for (const bool kept : {true, false}) {
            value.NoExpandStrings = text.NoExpandStrings = kept;
            value.SetValue(stored);
            EXPECT_EQ(value.TextValue(), kept ? stored : expanded);
            EXPECT_EQ(text.TextValue(), kept ? stored : expanded);
            text.SetValue(stored);
            EXPECT_EQ(value.TextValue(), stored);
        }
    }
    value.SetValue(Text("%RVL_TEST_TWO%"));
    EXPECT_EQ(value.NumberValue(), 2u);
}

TEST(cRegistry, AMissingValueIsTheDefault) {
    cRegistry value = MakeValue(RegistryType::String);
    value.SectionKey += "\\Missing";
    EXPECT_FALSE(value.KeyExists());
    EXPECT_EQ(value.Value(), RegistryVariant());
    EXPECT_EQ(value.TextValue(), "");
    EXPECT_EQ(value.NumberValue(), 0u);
    EXPECT_FALSE(value.DeleteValue());
    value.Default = Text("5");
    EXPECT_EQ(value.NumberValue(), 5u);
}

TEST(cRegistry, KnowsItsKey) {
    cRegistry value = MakeValue(RegistryType::String);
    value.SectionKey += "\\Key";
    value.CreateKey();
    value.SetValue(Text("x"));
    EXPECT_EQ(value.EnumerateValues(), std::vector<Text>{"Value"});
    EXPECT_TRUE(value.DeleteValue());
    EXPECT_TRUE(value.DeleteKey());
    EXPECT_FALSE(value.KeyExists());
    value.SectionKey = "Software\\Ravelin";
    EXPECT_EQ(value.EnumerateSections(), std::vector<Text>{"Client"});
}

}  // namespace
}  // namespace rvl
