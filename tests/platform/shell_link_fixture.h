#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "platform/shell_link.h"
#include "tests/support/workstation.h"

namespace rvl::test {

inline const Text kLink = "C:\\Desk\\My L\xEFnk.lnk";
inline const std::string kHostLink = "/Desk/My L\xC3\xAFnk.lnk";

class ShellLinkTest : public testing::Test {
 protected:
    ShellLinkTest() {
        WriteHostFile(HostFile(full.target), std::string(5, 'x'));
        std::filesystem::create_directory(c + "/Desk");
    }
    ~ShellLinkTest() override { EmptyDriveC(); }

    const std::string c = DriveC();
    const platform::ShellLink full{"C:\\Pr\xF6g\\RVL Client.EXE",
                                   "-start_frontend 3 \"\xC9t\xE9\"",
                                   "C:\\W\xFF\\",
                                   "D\xE9sc",
                                   "C:\\i c.ico",
                                   -4,
                                   7};
};

inline auto Fields(const platform::ShellLink& link) {
    return std::tuple(link.target, link.arguments, link.workingDirectory, link.description, link.iconLocation,
                      link.iconIndex, link.showCommand);
}

}  // namespace rvl::test
