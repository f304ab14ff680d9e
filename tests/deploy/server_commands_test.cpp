#include "deploy/server_commands.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/error.h"
#include "runtime/error_reporter.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using test::DriveC;

const Text kNul(1, '\0');

class CommandsTest : public testing::Test,
                     protected ServerReplies,
                     protected LinkCommands,
                     protected LocalSessions {
 protected:
    CommandsTest() { InstallErrorSink(&reporter); }
    ~CommandsTest() override {
        InstallErrorSink(nullptr);
        test::EmptyDriveC();
    }

    void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) override {
        sent += context + ":" + command;
        for (const Text& param : params)
            sent += ":" + param;
        sent += "|";
    }
    void OnHello(const std::vector<Text>& params) override {
        failure ? failure() : (void)(link += params.at(0) + "|");
    }
    void OnLoginOk() override { link += "LOGIN_OK|"; }
    void OnPong() override { link += "PONG|"; }
    void OnSetServer(const std::vector<Text>& params) override {
        link += std::to_string(params.size()) + "|";
    }
    void OnFindServerAgain() override { link += "AGAIN|"; }
    std::int16_t MaxClientID() const override { return 5; }
    bool HasSession(std::int16_t clientId) const override { return clientId == 3; }
    void SendToClient(std::int16_t clientId, const Text& context, const Text& command,
                      const Text& params) override {
        sent += "to " + std::to_string(clientId) + ":" + context + ":" + command + ":" + params + "|";
    }

    /// What is sent in answer.
    Text Answer(const Text& command, const Text& params, const Text& context = "c") {
        commands.m_sckServer_MessageReceived(context + kNul + command + kNul + params);
        return std::exchange(sent, {});
    }

    ErrorReporter reporter;
    Text sent, link;
    std::function<void()> failure;
    FileTransfers transfers{[this](auto&... reply) { SendToServer(reply...); }};
    ServerCommands commands{{*this, *this, transfers, *this}};
};

TEST_F(CommandsTest, Routing) {
    const std::pair<Text, Text> rows[] = {{"3#77", "to 3:77:MKDIR:C:\\m|"},
                                          {"3#a#b", "to 3:a#b:MKDIR:C:\\m|"},
                                          {"9#77", ""},      // beyond the last id
                                          {"4#77", ""},      // nobody there
                                          {"65539#77", ""},  // 3 in its lower half
                                          {"#77", "77:GENERAL_SUCCESS:MKDIR:C:\\m|"},
                                          {"x#7", "7:GENERAL_SUCCESS:MKDIR:C:\\m|"},
                                          {"3", "3:GENERAL_SUCCESS:MKDIR:C:\\m|"}};
    for (const auto& [context, answer] : rows)
        EXPECT_EQ(Answer(" mkdir", "C:\\m", context), answer) << context;
    EXPECT_EQ(Answer("X", "a" + kNul + kNul + "b", "3#77"), "to 3:77:X:a" + kNul + kNul + "b|");  // unchanged
    EXPECT_TRUE(test::Logged("<-- 3#77" + kNul + " mkdir" + kNul + "C:\\m"));
    for (const char* command : {"pong ", "LOGIN_OK", "SET_SERVER", "FIND_SERVER_AGAIN"})
        EXPECT_EQ(Answer(command, ""), "");
    EXPECT_EQ(link, "PONG|LOGIN_OK|0|AGAIN|");
    EXPECT_EQ(Answer("FOO", "x"), "");
    EXPECT_TRUE(test::Logged("Unknown server message: FOO"));
}

TEST_F(CommandsTest, Answers) {
    test::WriteHostFile(DriveC() + "/f/abc", "abc");
    const timespec times[] = {{1108303388, 0}, {1108303389, 999999999}};
    utimensat(AT_FDCWD, (DriveC() + "/f/abc").c_str(), times, 0);
    setenv("TZ", "America/New_York", 1);  // times are told as they are stored
    EXPECT_TRUE(Answer("GET_FILE_INFO", "C:\\f\\abc" + kNul + "0")
                    .ends_with(":#2005-02-13 14:03:09#:#2005-02-13 14:03:08#|"));
    const Text invalid = "GENERAL_ERROR:87:Invalid parameters:";
    const std::tuple<Text, Text, Text> rows[] = {
        {"HELLO", "", invalid + "HELLO:|"},
        {"MKDIR", kNul + "x", invalid + "MKDIR:" + kNul + "x|"},
        {"MKDIR", "C:\\f\\abc\\x", "GENERAL_ERROR:183:"},
        {"CREATE_DIRECTORY", kNul + "x", "GENERAL_ERROR:3:"},
        {"CREATE_DIRECTORY", "C:\\a\\b", "GENERAL_SUCCESS:CREATE_DIRECTORY:C:\\a\\b|"},
        {"GET_FILE_INFO", "C:\\*" + kNul + "-1", invalid},
        {"GET_FILE_INFO", "C:\\f\\a*" + kNul + "0", "FILE_INFO:abc:3:32:#"},
        {"GET_FILE_INFO", "C:\\F\\*" + kNul + "1", "FILE_INFO:.:0:16:#"},
        {"GET_FILE_INFO", "C:\\f\\none" + kNul + "0", "FILE_INFO|"},
        {"GET_FILE_INFO", "Q:\\*" + kNul + "1", "FILE_INFO_END|"},
        {"GET_FILE_MD5", kNul, invalid},
        {"GET_FILE_MD5", "C:\\f", "FILE_MD5:C:\\f|"},
        {"GET_FILE_MD5", "C:\\F\\ABC", "FILE_MD5:C:\\F\\ABC:900150983cd24fb0d6963f7d28e17f72|"}};
    for (const auto& [command, params, answer] : rows) {
        const Text found = Answer(command, params), expected = "c:" + answer;
        EXPECT_TRUE(answer.ends_with('|') ? found == expected : found.starts_with(expected)) << found;
        EXPECT_EQ(found.ends_with("|c:FILE_INFO_END|"),
                  params.ends_with("\\*" + kNul + "1") && params[0] == 'C');
    }
    unsetenv("TZ");
}

TEST_F(CommandsTest, AnErrorIsAnsweredAndTheNextMessageServed) {
    const Text handler = "frmClientService.m_sckServer_MessageReceived";
    failure = [] { throw Error(13, "Source", "Type mismatch"); };
    EXPECT_EQ(Answer("HELLO", "token", "#77"), "77:GENERAL_ERROR:13:Error in " + handler +
                                                   ": Error #13 from Source: Type mismatch:HELLO:token|");
    failure = [] { throw 5; };
    EXPECT_TRUE(
        Answer("HELLO", "token").starts_with("c:GENERAL_ERROR:51:Error in " + handler + ": Error #51 from "));
    EXPECT_NE(test::LogContent().find("via " + handler), Text::npos);
    failure = nullptr;
    EXPECT_EQ(Answer("HELLO", "token") + link, "token|");
}

TEST_F(CommandsTest, ATransferTakesAllMessagesOfItsContext) {
    const Text begin = "C:\\new" + kNul + "6" + kNul + "1";
    EXPECT_EQ(Answer("FILE_BEGIN", begin, "T"), "T:FILE_BEGIN_OK:0|");
    EXPECT_EQ(Answer("FILE_DATA", "a" + kNul + "b", "T"), "T:FILE_MORE:3|");
    EXPECT_EQ(Answer("PONG", "", "T") + Answer("FILE_DATA", "other", "U") + link, "");
    EXPECT_EQ(Answer("FILE_BEGIN", begin, "U"), "U:ERROR:Cannot accept more than one file at once|");
    EXPECT_EQ(Answer("FILE_DATA", "end", "T"), "T:FILE_COMPLETE|");
    EXPECT_EQ(test::ReadHostFile(DriveC() + "/new"), "a" + kNul + "bend");
    EXPECT_EQ(Answer("PONG", "", "T") + link, "PONG|");
}

}  // namespace
}  // namespace rvl
