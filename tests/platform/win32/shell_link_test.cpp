#include "platform/shell_link.h"

#include <gtest/gtest.h>

#include "tests/platform/shell_link_fixture.h"
#include "tests/support/host_shell.h"

namespace rvl::platform {
namespace {

using ShellLinkFile = test::ShellLinkTest;

/// lnkinfo is a program of the host outside Wine.
TEST_F(ShellLinkFile, AnotherProgramReadsTheSame) {
    if (test::OutputOf("command -v lnkinfo", c + "/Desk").empty())
        GTEST_SKIP() << "lnkinfo is missing (package liblnk-utils)";
    ASSERT_EQ(WriteShellLink("C:\\Desk\\a.lnk", full), 0);
    const std::string output = test::OutputOf("LC_ALL=C.UTF-8 lnkinfo -v a.lnk", c + "/Desk");
    for (const char* line : {"Local path\t\t\t: C:\\Pr\xC3\xB6g\\RVL Client.EXE\n",
                             "Command line arguments\t\t: -start_frontend 3 \"\xC3\x89t\xC3\xA9\"\n",
                             "Working directory\t\t: C:\\W\xC3\xBF\\\n", "Description\t\t\t: D\xC3\xA9sc\n",
                             "Icon location\t\t\t: C:\\i c.ico\n", "Icon index\t\t\t: -4\n"})
        EXPECT_NE(output.find(line), std::string::npos) << line << output;
    EXPECT_EQ(test::ReadHostFile(c + "/Desk/a.lnk")[0x3C], 7);
}

}  // namespace
}  // namespace rvl::platform
