#include "runtime/log_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "platform/process.h"
#include "runtime/process_state.h"
#include "tests/support/child_process.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using test::LogContent;

const Text kNul(1, '\0');

std::filesystem::path LogHostPath() {
    return test::HostFile(LogPath());
}

TEST(LogFile, LineLayout) {
    EXPECT_EQ(LogHostPath(), test::HostFile(test::ThisProgram()).replace_extension(".log"));
    const Text text = "text \xE9\r\nsecond" + kNul + "line",
               process = std::to_string(platform::ProcessId()) + "] ";
    test::ClearLog();
    State().LogTag = "Service";
    Log(text);
    EXPECT_TRUE(
        std::regex_match(LogContent().substr(0, 20), std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d )")));
    EXPECT_EQ(LogContent().substr(20), "[Client Service " + process + text + "\r\n");
    Log("no tag", true);
    EXPECT_TRUE(LogContent().ends_with(" [Client " + process + "no tag\r\n"));
    State().LogTag.clear();
    test::ClearLog();
    std::filesystem::create_directory(LogHostPath());
    Log("cannot be written");
    test::ClearLog();
}

TEST(LogFile, Trimming) {
    constexpr std::size_t kKeep = 1048576, kThreshold = 1572864;
    std::string lines;
    for (int number = 0; lines.size() < 3 * kThreshold; ++number)
        lines += "line " + std::to_string(number) + "\r\n";
    std::string straddling = lines.substr(0, kThreshold);
    straddling.replace(kThreshold - kKeep - 1, 2, "\r\n");  // the cut falls between CR and LF
    const std::pair<bool, std::string> rows[] = {
        {false, lines.substr(0, kThreshold - 1)},
        {true, lines.substr(0, kThreshold)},
        {true, straddling},
        {true, lines.substr(0, kThreshold - kKeep) + std::string(kKeep, '\n')}};  // no line end in the tail
    for (const auto& [trimmed, before] : rows) {
        test::WriteHostFile(LogHostPath(), before);
        EXPECT_EQ(TrimLogFile(), trimmed);
        const std::size_t lineEnd = before.find("\r\n", before.size() - kKeep);
        std::string kept = lineEnd == std::string::npos ? "" : before.substr(lineEnd + 2);
        if (!trimmed) kept = before;
        ASSERT_EQ(LogContent().compare(0, kept.size(), kept), 0);
        const std::regex rest(trimmed ? R"(.{20}\[Client \d+\] Log file trimmed\r\n)" : "");
        EXPECT_TRUE(std::regex_match(LogContent().substr(kept.size()), rest));
    }
    test::ClearLog();
    EXPECT_FALSE(TrimLogFile());  // missing
    Log("short");
    EXPECT_TRUE(TrimLogFile(1000, 1));  // reached, but nothing in excess
    EXPECT_TRUE(LogContent().ends_with("] short\r\n"));
}

TEST(LogFile, ProtocolData) {
    const Text x1024(1024, 'x'), ping = kNul + "PING" + kNul + "\r\n", fileData = kNul + " file_Data" + kNul;
    Text dump = "09 00", upload = "FILE_UPLOAD" + kNul + "FILE_DATA" + kNul;
    for (int count = 1; count < 1024; ++count)
        dump += " 78 00";
    const std::tuple<Text, Text, Text> rows[] = {{ping, "", "--> " + ping},
                                                 {"", "#3[127.0.0.1]", "#3[127.0.0.1]: --> "},
                                                 {x1024, "", "--> " + x1024},
                                                 {x1024 + "\t", "", "--> " + x1024 + " [...]"},
                                                 {"\t" + x1024, "", "--> " + dump + " [...]"},
                                                 {"~\t\x1F\x7F\xE9", "", "--> 7E 00 09 00 1F 00 7F 00 E9 00"},
                                                 {upload + dump, "", "--> " + upload + "[...]"},
                                                 {fileData + "\t", "", "--> " + fileData + "[...]"}};
    for (const auto& [data, peer, line] : rows) {
        test::ClearLog();
        MaybeLogProtocolData(data, true, peer);
        EXPECT_EQ(LogContent().substr(LogContent().find("] ") + 2), line + "\r\n");
    }
}

}  // namespace
}  // namespace rvl
