#include "deploy/server_commands.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "platform/system_message.h"
#include "runtime/error_reporter.h"
#include "runtime/folder_paths.h"
#include "runtime/system_information.h"
#include "tests/support/accounts.h"
#include "tests/support/workstation.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

const Text kNul(1, '\0');

class CommandsTest : public testing::Test,
                     protected ServerReplies,
                     protected LinkCommands,
                     protected LocalSessions,
                     protected DeploymentAudience,
                     protected UpdateCommands {
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
    // Client 3 is a switchboard, client 4 a helper.
    bool HasSession(std::int32_t clientId) const override { return clientId == 3 || clientId == 4; }
    bool IsHelper(std::int32_t clientId) const override { return clientId == 4; }
    bool IsSwitchboard(std::int32_t clientId) const override { return clientId == 3; }
    void SendToClientEx(std::int16_t clientId, const Text& context, const Text& command,
                        const Text& params) override {
        sent += "to " + std::to_string(clientId) + ":" + context + ":" + command + ":" + params + "|";
    }
    void SendToAllClientsEx(const Text& context, const Text& command, const Text& params) override {
        sent += "to all:" + context + ":" + command + ":" + params + "|";
    }
    Text StartFrontend(std::int32_t, std::int32_t frontendId) override {
        return frontendId == 7 ? "" : "No " + std::to_string(frontendId);
    }
    void VersionDeployed(std::int32_t) override {}
    void VersionRemoved(std::int32_t) override {}
    void OnUpdatedBinary(const Text& path) override { link += "update to " + path + "|"; }

    /// What is sent in answer.
    Text Answer(const Text& command, const Text& params, const Text& context = "c") {
        commands.m_sckServer_MessageReceived(context + kNul + command + kNul + params);
        return std::exchange(sent, {});
    }

    /// The generic answer: success when there is no error.
    static Text Expected(const Text& command, const std::vector<Text>& params, const Text& error) {
        const Text reply = error.empty() ? "c:GENERAL_SUCCESS:" : "c:GENERAL_ERROR:" + error + ":";
        return reply + command + ":" + JoinParameters(params) + "|";
    }

    ErrorReporter reporter;
    Text sent, link;
    std::function<void()> failure;
    FileTransfers transfers{[this](auto&... reply) { SendToServer(reply...); }};
    LocalDatabase database{{Self(), CommonAppDataPath()}};
    FrontendRegistration registration{database, *this};
    FrontendRemoval removal{database, *this};
    FrontendDeployment deployment{database, *this, removal, *this};
    FrontendCommands frontends{registration, deployment, removal};
    ServerCommands commands{{*this, *this, transfers, *this, frontends, *this}};
};

TEST_F(CommandsTest, Routing) {
    const std::pair<Text, Text> rows[] = {{"3#77", "to 3:77:MKDIR:C:\\m|"},
                                          {"3#a#b", "to 3:a#b:MKDIR:C:\\m|"},
                                          {"9#77", ""},      // beyond the last id
                                          {"5#77", ""},      // nobody there
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

TEST_F(CommandsTest, AccessRights) {
    const auto of = [](int code) {
        return std::to_string(code) + ":" + StripTerminator(platform::SystemMessage(code));
    };
    const Text invalid = ":Invalid parameters", somebody = test::kSomebody;
    const Text unknown = ":Invalid parameter, unrecognised internal name: RVL-INTERNAL\\users";
    const std::tuple<Text, std::vector<Text>, Text> rows[] = {
        {"ACL_REMOVE_ALL", {"C:\\f"}, "87" + invalid},
        {"ACL_REMOVE_ALL", {"C:\\f", ""}, "87" + invalid},
        {"ACL_REMOVE_ALL", {"C:\\f", "-1"}, "87" + invalid},
        {"ACL_REMOVE_ALL", {"", "1"}, "87" + invalid},
        {"ACL_REMOVE_ALL", {"C:\\f", "0"}, ""},
        {"ACL_REMOVE_ALL", {"C:\\f", "5", "more"}, ""},
        {"ACL_REMOVE_ALL", {"C:\\none", "5"}, of(2)},
        {"ACL_ADD", {"C:\\f", somebody}, "87" + invalid},
        {"ACL_ADD", {"C:\\f", somebody, "0"}, "87" + invalid},
        {"ACL_ADD", {"C:\\f", somebody, "x"}, "87" + invalid},
        {"ACL_ADD", {"C:\\f", "", "1"}, "87" + invalid},
        {"ACL_ADD", {"C:\\f", "RVL-INTERNAL\\users", "1"}, "87" + unknown},
        {"ACL_ADD", {"C:\\f", "rvl\\nobody at all", "1"}, of(1332)},
        {"ACL_ADD", {"C:\\f", "RVL-INTERNAL\\everyOne", "1179785"}, ""},
        {"ACL_OWNER", {"C:\\f"}, "87" + invalid},
        {"ACL_OWNER", {"", somebody}, "87" + invalid},
        {"ACL_OWNER", {"C:\\f", "RVL-INTERNAL\\users"}, "87" + unknown},
        {"ACL_OWNER", {"C:\\none", "RVL-INTERNAL\\ADMINISTRATORS"}, of(2)},
        {"ACL_OWNER", {"C:\\none", "RVL-INTERNAL\\everyone"}, of(1307)},
        {"ACL_OWNER", {"C:\\none", "RVL-INTERNAL\\system"}, of(2)}};
    test::WriteHostFile(test::DriveC() + "/f", "x");
    for (const auto& [command, params, error] : rows)
        EXPECT_EQ(Answer(command, JoinParameters(params)), Expected(command, params, error));
    for (const char* line : {"Administrators group is Administrators", "Everyone group is Everyone",
                             "Local System users is SYSTEM"})
        EXPECT_TRUE(test::Logged(line)) << line;
}

TEST_F(CommandsTest, LocalSessions) {
    const Text unavailable =
        "The application is temporarily unavailable.\r\n\r\nPlease try again in a few moments.";
    const Text box = "to 3::MSGBOX:", done = "to 3::START_FRONTEND_DONE:|";
    const std::tuple<Text, std::vector<Text>, Text> rows[] = {
        {"START_FRONTEND",
         {"3", "7", "Orders", "3"},  // no helper
         "to 3::START_HELPER:|" + box + JoinParameters({unavailable, "Orders", "16"}) + "|" + done},
        {"START_FRONTEND", {"65540", "7", "Orders", "-1"}, ""},
        {"START_FRONTEND", {"4", "7", "Orders", "3"}, done},
        {"START_FRONTEND",
         {"4", "8", "Orders", "3"},
         box + JoinParameters({"The application is currently unavailable.\r\n\r\nNo 8", "Orders", "16"}) +
             "|" + done},
        {"START_FRONTEND", {"4", "8", "Orders", "4"}, ""},  // the switchboard is none
        {"DENY_FRONTEND",
         {"4", "7", "Orders", "3", "Not you", "48"},
         box + JoinParameters({"Not you", "Orders", "48"}) + "|" + done},
        {"DENY_FRONTEND", {"4", "7", "Orders", "-1", "Not you", "48"}, ""},
        {"CLOSE_FRONTEND",
         {"4", "7", "65", "a.mdb", "30", "1", "Go home", "more"},
         "to 4:c:CLOSE_FRONTEND:" + JoinParameters({"7", "65", "a.mdb", "30", "1", "Go home"}) + "|"},
        {"CLOSE_FRONTEND", {"5", "7", "65", "a.mdb", "30", "1", "Go home"}, ""},
        {"FRONTEND_UPDATED",
         {"7", "", "x"},
         "to all:c:FRONTEND_UPDATED:" + JoinParameters({"7", "", "x"}) + "|"}};
    for (const auto& [command, params, answer] : rows)
        EXPECT_EQ(Answer(command, JoinParameters(params)), answer)
            << command << " " << JoinParameters(params);
}

TEST_F(CommandsTest, TooFewParameters) {
    const std::pair<Text, std::size_t> rows[] = {{"FRONTEND_ADD", 14},   {"FRONTEND_FILE_ADD", 3},
                                                 {"FRONTEND_DEPLOY", 2}, {"FRONTEND_MAKE_AVAILABLE", 2},
                                                 {"FRONTEND_REMOVE", 1}, {"UPDATED_BINARY", 1},
                                                 {"CLOSE_FRONTEND", 7},  {"START_FRONTEND", 4},
                                                 {"DENY_FRONTEND", 6},   {"CREATE_SHORTCUT", 4}};
    for (const auto& [command, required] : rows) {
        const Text params = JoinParameters(std::vector<Text>(required - 1, "1"));
        EXPECT_EQ(Answer(command, params),
                  "c:GENERAL_ERROR:87:Invalid parameters:" + command + ":" + params + "|");
    }
    for (const Text params : {"0", "x", ""})
        EXPECT_EQ(Answer("FRONTEND_REMOVE", params + kNul),
                  "c:GENERAL_ERROR:87:Invalid parameters:FRONTEND_REMOVE:" + params + kNul + "|");
    EXPECT_TRUE(Answer("UPDATED_BINARY", "C:\\none").starts_with("c:GENERAL_ERROR:87:"));
    test::WriteHostFile(test::DriveC() + "/new", "");
    EXPECT_EQ(Answer("UPDATED_BINARY", "C:\\new") + link, "update to C:\\new|");
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
