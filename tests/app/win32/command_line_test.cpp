#include <gtest/gtest.h>

#include "platform/process.h"
#include "tests/support/child_process.h"
#include "tests/support/workstation.h"
#include "util/command_words.h"

namespace rvl {
namespace {

/// Not a test: a process that tells its words.
TEST(CommandLineChild, DISABLED_Tells) {
    platform::SetCommandLine(0, nullptr);
    Text words;
    for (int index = 3; index < 9; ++index)  // behind those for the test
        words += GetParam(platform::CommandLine(), index) + "|";
    test::WriteHostFile(test::DriveC() + "/words", words);
}

TEST(CommandLine, ItsWordsAreThoseThatWereGiven) {
    std::uint32_t process = 0;
    const Text line =
        "\"" + test::ThisProgram() + "\" " + test::ChildArguments("CommandLineChild.DISABLED_Tells");
    EXPECT_EQ(platform::StartProcess(line + " 12 \"My \"\"big\"\" \xC9t\xE9\" \"\" \"C:\\a b\\\" -x \"y\"",
                                     process),
              0);
    const Text words = "12|My \"big\" \xC9t\xE9||C:\\a b\\|-x|y|";
    EXPECT_TRUE(test::RunUntil([&] { return test::ReadHostFile(test::DriveC() + "/words") == words; }))
        << test::ReadHostFile(test::DriveC() + "/words");
    test::EmptyDriveC();
}

}  // namespace
}  // namespace rvl
