#include "util/text_functions.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/util/recorded_errors.h"

namespace rvl {
namespace {

constexpr std::int32_t kNone = 4711;

TEST(TextFunctions, CaseFollowsLatin1) {
    // À Þ × ß à þ ÷ ÿ µ
    EXPECT_EQ(LowerCase("aZ[\xC0\xDE\xD7\xDF\xE0\xF7\xFF"), "az[\xE0\xFE\xD7\xDF\xE0\xF7\xFF");
    EXPECT_EQ(UpperCase("aZ{\xE0\xFE\xF7\xDF\xC0\xD7\xFF\xB5"), "AZ{\xC0\xDE\xF7\xDF\xC0\xD7\xFF\xB5");
}

TEST(TextFunctions, TrimTakesSpacesOnly) {
    EXPECT_EQ(Trim("  a b\t "), "a b\t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(TextView(" \0 ", 3)), Text(1, '\0'));
}

TEST(TextFunctions, ComparesWithoutCase) {
    struct {
        TextView a, b;
        int order;
    } const rows[] = {
        {"abc", "ABC", 0}, {"\xC4", "\xE4", 0}, {"a", "B", -1}, {"ab", "A", 1},
        {"", "a", -1},     {"z", "\xC4", -1},   {"_", "A", -1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CompareNoCase(row.a, row.b), row.order) << row.a << "/" << row.b;
        EXPECT_EQ(CompareNoCase(row.b, row.a), -row.order) << row.b << "/" << row.a;
        EXPECT_EQ(EqualsNoCase(row.a, row.b), row.order == 0);
    }
}

TEST(TextFunctions, Dumps) {
    EXPECT_EQ(HexString(-1), "0xFFFFFFFF");
    EXPECT_EQ(HexString(53), "0x00000035");
    EXPECT_EQ(HexDumpString("A"), "41 00");
    EXPECT_EQ(HexDumpString(TextView("\xFF\0", 2)), "FF 00 00 00");
    EXPECT_EQ(HexDumpString(""), "");
}

TEST(TextFunctions, FindsNonPrintableCharacters) {
    EXPECT_FALSE(ContainsNonPrintableCharacters(TextView("a ~\r\n\0", 6)));
    for (const TextView text : {"\t", "\x1F", "\x7F", "\xE4"})
        EXPECT_TRUE(ContainsNonPrintableCharacters(text)) << HexDumpString(text);
}

TEST(TextFunctions, ToBool) {
    for (const TextView text : {" Yes", "true", "ALWAYS", "p", "2", "-1", " 0.5", "99999999999999999999"})
        EXPECT_TRUE(toBool(text)) << text;
    for (const TextView text : {"", "  ", "No", "false", "d", "0", "-0.0", "maybe", "2x", "-", "."})
        EXPECT_FALSE(toBool(text)) << text;
}

TEST(TextFunctions, SmallTexts) {
    EXPECT_EQ(StripTerminator(TextView("ab\0c", 4)), "ab");
    EXPECT_EQ(StripTerminator("ab"), "ab");
    EXPECT_EQ(MMSS(125), "02:05");
    EXPECT_EQ(MMSS(6000), "100:00");
    EXPECT_EQ(MMSS(-5), "00:00");
    EXPECT_EQ(NumberText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(TextFunctions, ParseLongOr) {
    struct {
        TextView text;
        std::int32_t value;
    } const rows[] = {
        {"12", 12},
        {" -7 ", -7},
        {"+3", 3},
        {"007", 7},
        {"2.5", 2},
        {"3.5", 4},
        {"-2.5", -2},
        {"-3.5", -4},
        {"2.51", 3},
        {"2.500", 2},
        {"2.49", 2},
        {".5", 0},
        {"5.", 5},
        {"0.9", 1},
        {"", kNone},
        {" ", kNone},
        {"-", kNone},
        {".", kNone},
        {"1 2", kNone},
        {"1.2.3", kNone},
        {"0x10", kNone},
        {"1e3", kNone},
        {"- 1", kNone},
        {"12a", kNone},
        {"\t1", kNone},
        {"--1", kNone},
        {"1,5", kNone},
        {TextView("1\0", 2), kNone},
        {"2147483647", 2147483647},
        {"2147483648", kNone},
        {"2147483647.4", 2147483647},
        {"2147483647.5", kNone},
        {"-2147483648.5", std::numeric_limits<std::int32_t>::min()},
        {"-2147483649", kNone},
        {"99999999999999999999999", kNone},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ParseLongOr(row.text, kNone), row.value) << row.text;
}

TEST(TextFunctions, ToLongRaisesWhatItCannotConvert) {
    const auto number = [](TextView text) {
        try {
            return ToLong(text);
        } catch (const Error& error) {
            return -error.Number();
        }
    };
    EXPECT_EQ(number(" 8"), 8);
    EXPECT_EQ(number("x"), -13);
    EXPECT_EQ(number("3000000000"), -6);
}

TEST(TextFunctions, ParseInteger64) {
    EXPECT_EQ(ParseInteger64(" 9223372036854775807 "), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ParseInteger64("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(ParseInteger64("-0"), 0);
    for (const TextView text :
         {"", "9223372036854775808", "-9223372036854775809", "99999999999999999999", "1.0", "5.", "a"})
        EXPECT_EQ(ParseInteger64(text), std::nullopt) << text;
}

TEST(TextFunctions, DeHTML) {
    struct {
        TextView html, plain;
    } const rows[] = {
        {"a<br>b", "a\r\nb"},
        {"a<BR clear=all>b<br/>c", "a\r\nb\r\nc"},
        {"<p>x", "x"},
        {"<b></b><p>x", "x"},
        {"x<p class=\"a>b\">y</p><pre>z", "x\r\n\r\nyz"},
        {"a\tb\r\nc", "a b  c"},
        {"&lt;b&gt;&nbsp;&quot;&amp;lt;", "<b> \"&lt;"},
        {"1 < 2", "1 < 2"},
        {"a<b \"> c", "a<b \"> c"},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DeHTML(row.html), row.plain) << row.html;
}

TEST(TextFunctions, SplitAtOneCharacterOnly) {
    using Pieces = std::vector<TextView>;
    EXPECT_EQ(SplitAt(",a,,", ","), (Pieces{"", "a", "", ""}));
    EXPECT_EQ(SplitAt("", ","), Pieces{""});
    EXPECT_EQ(SplitAt("a, b", ", "), Pieces{"a, b"});
    EXPECT_EQ(SplitAt("ab", ""), Pieces{"ab"});
}

}  // namespace
}  // namespace rvl
