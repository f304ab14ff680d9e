#include "util/message.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "util/handle_error.h"
#include "util/parameters.h"

namespace rvl {
namespace {

using namespace std::string_literals;
using Parameters = std::vector<Text>;

/// The description of the error an action raises.
template <typename Action>
Text Raised(const Action& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Description();
    }
    return "";
}

TEST(Message, IsMadeAsOnTheWire) {
    EXPECT_EQ(MakeMessage("", "PING", ""), "\0PING\0"s);
    EXPECT_EQ(MakeMessage("c", "HELLO", "RVL\0CLIENT\0001.1.3"s), "c\0HELLO\0RVL\0CLIENT\0001.1.3"s);
    EXPECT_EQ(Raised([] { MakeMessage("a\0"s, "X", ""); }), "Assert failed: context cannot contain null");
    EXPECT_EQ(Raised([] { MakeMessage("", "\0X"s, ""); }), "Assert failed: cmd cannot contain null");
}

TEST(Message, IsSplit) {
    const struct {
        Text text, context, command, params;
    } rows[] = {
        {"\0PING\0"s, "", "PING", ""},
        {"abc", "abc", "", ""},
        {"", "", "", ""},
        {"\0 pong \0x"s, "", "PONG", "x"},
        {" c \0cmd"s, " c ", "CMD", ""},
        {"c\0x\0 a\0\0c "s, "c", "X", " a\0\0c "s},
    };
    for (const auto& row : rows) {
        const Message message = SplitMessage(row.text);
        EXPECT_EQ(message.context, row.context);
        EXPECT_EQ(message.command, row.command);
        EXPECT_EQ(message.params, row.params);
    }
}

TEST(Message, LargeParametersStayInTheirBuffer) {
    Text text = MakeMessage("c", "FILE_DATA", Text(100000, 'x'));
    const auto buffer = reinterpret_cast<std::uintptr_t>(text.data());
    const Message message = SplitMessage(std::move(text));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(message.params.data()), buffer);
}

TEST(Message, LongsAreLittleEndian) {
    EXPECT_EQ(LongToString(23), "\x17\0\0\0"s);
    EXPECT_EQ(LongToString(0x12345678), "\x78\x56\x34\x12");
    for (const std::int32_t value : {0, 23, -1, 255, 0x00800080, std::numeric_limits<std::int32_t>::min()})
        EXPECT_EQ(StringToLong(LongToString(value)), value);
    for (const TextView text : {"abc", "abcde"})
        EXPECT_EQ(Raised([&] { StringToLong(text); }), "Assert failed: StringToLong: Length must be 4");
}

TEST(Parameters, SplitAndJoin) {
    const struct {
        Text params;
        Parameters list;
    } rows[] = {
        {"", {}}, {"a", {"a"}}, {"a\0\0c"s, {"a", "", "c"}}, {"\0"s, {"", ""}}, {"a\0"s, {"a", ""}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(SplitParameters(row.params), row.list);
        EXPECT_EQ(JoinParameters(row.list), row.params);
    }
    EXPECT_EQ(JoinParameters({""}), "");
}

}  // namespace
}  // namespace rvl
