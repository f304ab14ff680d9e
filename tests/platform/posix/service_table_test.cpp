#include <sys/stat.h>

#include <csignal>

#include "platform/posix/detached_process.h"
#include "platform/posix/service_lock.h"
#include "tests/platform/service_manager_fixture.h"

namespace rvl::platform {
namespace {

using ServiceTable = ServiceManager;

TEST_F(ServiceTable, TheNextOperationRemovesWhatAKilledServiceLeft) {
    for (const auto& next : {+[] { Register(); }, +[] { UnregisterService("Test"); },
                             +[] { LaunchService("Test"); }, +[] { SendStopControl("Test"); },
                             +[] { StateNow(); }, +[] { RegisteredServiceCommandLine("Test"); }}) {
        ASSERT_EQ(Register() + LaunchService("Test") + UnregisterService("Test"), 0);
        ExpectCodes(ServiceState::Running, 1072, 1072, 1072, 0);
        kill(FindServiceHolder().process, SIGKILL);
        ASSERT_TRUE(test::RunUntil([] { return FindServiceHolder().process == 0; }));
        EXPECT_TRUE(RegistryKeyExists(RegistryRoot::LocalMachine, kKey));
        next();
        EXPECT_FALSE(ReadRegistry(RegistryRoot::LocalMachine, kKey, "DeleteFlag"));
        UnregisterService("Test");
    }
}

TEST_F(ServiceTable, AServiceStartedByHandCounts) {
    ASSERT_EQ(Register(), 0);
    Keep("start");
    DetachedProcess byHand;
    ASSERT_EQ(byHand.Start(ServiceItself()), 0);
    EXPECT_TRUE(RunUntilState(ServiceState::StartPending));
    EXPECT_EQ(LaunchService("Test"), 1056);
    Let("start");
    EXPECT_TRUE(RunUntilState(ServiceState::Running));
    EXPECT_EQ(SendStopControl("Test"), 0);
    EXPECT_TRUE(RunUntilState(ServiceState::Stopped));
}

TEST_F(ServiceTable, WhatCannotStart) {
    test::WriteHostFile(test::DriveC() + "/data", "no program");
    test::WriteHostFile(test::DriveC() + "/odd",
                        "\x7F"
                        "ELF, or not");
    chmod((test::DriveC() + "/data").c_str(), 0644);
    chmod((test::DriveC() + "/odd").c_str(), 0755);
    const std::pair<Text, int> rows[] = {{"\"/no such/program\" -service_mode", 2},
                                         {"\"\"", 2},
                                         {"/proc", 5},
                                         {test::DriveC() + "/data", 5},
                                         {test::DriveC() + "/odd", 193},
                                         {"/bin/false -service_mode", 1053}};
    for (const auto& [commandLine, code] : rows) {
        ASSERT_EQ(Register(commandLine), 0) << commandLine;
        EXPECT_EQ(LaunchService("Test"), code) << commandLine;
        EXPECT_EQ(StateNow(), ServiceState::Stopped);
        EXPECT_EQ(UnregisterService("Test"), 0);
    }
}

TEST_F(ServiceTable, HalfAnEntryIsNone) {
    WriteRegistry(RegistryRoot::LocalMachine, kKey, "DisplayName", Text("Half"));
    WriteRegistry(RegistryRoot::LocalMachine, kKey, "DeleteFlag", 1u);
    ExpectCodes(ServiceState::NotInstalled, 0, 1060, 1060, 1060);
    EXPECT_EQ(Register("/bin/true"), 0);
    EXPECT_EQ(RegisteredServiceCommandLine("Test"), "/bin/true");
    EXPECT_EQ(StateNow(), ServiceState::Stopped);
}

}  // namespace
}  // namespace rvl::platform
