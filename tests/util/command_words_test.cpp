#include "util/command_words.h"

#include <gtest/gtest.h>

#include <vector>

namespace rvl {
namespace {

TEST(CommandWords, GetParam) {
    struct {
        TextView line;
        std::vector<Text> words;  // the last one is followed by empty ones
    } const rows[] = {
        {"-start_frontend 12", {"-start_frontend", "12"}},
        {"a \"b c\" d", {"a", "b c", "d"}},
        {"a  b", {"a", "", "b"}},
        {"  x ", {"x"}},
        {"", {""}},
        {"\"a \"\"x\"\" b\" c", {"a \"x\" b", "c"}},
        {"a \"\" b", {"a", "", "b"}},
        {"x\"y z\"w", {"x", "y z", "w"}},
        {"\"a\"b c", {"a", "b", "c"}},
        {"a \"b c", {"a", "b c"}},
        {"a \"", {"a", ""}},
        {"\"", {""}},
        {"\"\"\"\"", {"\""}},
    };
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.words.size() + 2; ++i) {
            const Text expected = i < row.words.size() ? row.words[i] : "";
            EXPECT_EQ(GetParam(row.line, static_cast<int>(i)), expected) << row.line << " / " << i;
        }
        EXPECT_EQ(GetParam(row.line, -1), "") << row.line;
        EXPECT_EQ(FirstWord(row.line), row.words[0]) << row.line;
    }
}

TEST(CommandWords, RestAfterFirstWord) {
    struct {
        TextView line, rest;
    } const rows[] = {
        {" a b  c ", "b  c"}, {"a  b", " b"},          {"a", ""},     {"", ""},
        {"\"a b\" c", "c"},   {"a\"b c\"", "\"b c\""}, {"\"a b", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(RestAfterFirstWord(row.line), row.rest) << row.line;
}

}  // namespace
}  // namespace rvl
