#include "deploy/server_commands.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "runtime/error_reporter.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

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
    const Text invalid = "c:GENERAL_ERROR:87:Invalid parameters:", info = "C:\\*" + kNul;
    const std::tuple<Text, Text, Text> rows[] = {
        {"HELLO", "", invalid + "HELLO:|"},
        {"FILE_BEGIN", "x" + kNul + "5", invalid + "FILE_BEGIN:x" + kNul + "5|"},
        {"MKDIR", kNul + "x", invalid + "MKDIR:" + kNul + "x|"},
        {"GET_FILE_INFO", info, invalid + "GET_FILE_INFO:" + info + "|"},
        {"GET_FILE_INFO", "Q:\\x" + kNul + "0", "c:FILE_INFO|"},
        {"GET_FILE_INFO", "Q:\\x" + kNul + "1", "c:FILE_INFO_END|"},
        {"GET_FILE_MD5", "C:\\", "c:FILE_MD5:C:\\|"},
        {"FILE_BEGIN", "C:\\x" + kNul + "5" + kNul + "1", "c:FILE_BEGIN_OK:0|"},
        {"PONG", "", ""},  // taken by the transfer
        {"FILE_DATA", "12345", "c:FILE_COMPLETE|"}};
    for (const auto& [command, params, answer] : rows)
        EXPECT_EQ(Answer(command, params), answer) << command;
    EXPECT_EQ(link, "");
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

}  // namespace
}  // namespace rvl
