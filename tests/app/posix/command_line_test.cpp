#include <gtest/gtest.h>

#include "platform/process.h"
#include "util/command_words.h"

namespace rvl {
namespace {

TEST(CommandLine, TheWordsThatWereGivenCanBeReadBack) {
    const char* argv[] = {"RVLClient", "12", "My \"big\" Orders", "", "\"", "x\"", "\"y", " ", "z"};
    platform::SetCommandLine(9, argv);
    for (int index = 1; index < 9; ++index)
        EXPECT_EQ(GetParam(platform::CommandLine(), index - 1), argv[index]);
    EXPECT_TRUE(platform::CommandLine().starts_with("12 \"My \"\"big\"\" Orders\" \"\" "));
    const char* utf8[] = {"RVLClient", "\xC3\xA9", "\xFF"};
    platform::SetCommandLine(3, utf8);
    EXPECT_EQ(platform::CommandLine(), "\xE9 \xFF");  // what is no text keeps its bytes
}

}  // namespace
}  // namespace rvl
