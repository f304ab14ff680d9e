#include "platform/service_manager.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <filesystem>
#include <thread>

#include "platform/event_loop.h"
#include "platform/posix/detached_process.h"
#include "platform/posix/service_lock.h"
#include "platform/registry.h"
#include "platform/service_process.h"
#include "tests/support/workstation.h"

namespace rvl::platform {
namespace {

constexpr const char* kKey = "SYSTEM\\CurrentControlSet\\Services\\Test";

bool Exists(const char* name) {
    return std::filesystem::exists(test::Root() + "/" + name);
}

void AwaitFile(const char* name) {
    while (!Exists(name))
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

/// Not a test: the service itself, this program again. It starts and stops as far as it is let.
TEST(ServiceChild, DISABLED_Serves) {
    ServiceEvents events;
    events.start = [] { AwaitFile("start"); };
    events.control = [](int) {};
    events.closeWindow = [] {};
    events.stop = [] {
        ReportServiceStopping();
        AwaitFile("stop");
        EndServiceProcess();
        QuitEventLoop();
    };
    ASSERT_EQ(StartServiceProcess("Test", events), ServiceStart::Started);
    RunEventLoop();
}

class ServiceManager : public testing::Test {
 protected:
    void SetUp() override {
        setenv("RVL_TEST_CHILD", "1", 1);
        for (const char* step : {"start", "stop"})
            Let(step);
    }

    void TearDown() override {
        if (const pid_t service = FindServiceHolder().process; service != 0) kill(service, SIGKILL);
        RunUntilState(ServiceState::Stopped);
        DeleteRegistryKey(RegistryRoot::LocalMachine, kKey);
        unsetenv("RVL_TEST_CHILD");
    }

    static void Let(const char* step) { test::WriteHostFile(test::Root() + "/" + step, ""); }
    static void Keep(const char* step) { std::filesystem::remove(test::Root() + "/" + step); }

    static Text ServiceItself() {
        return "\"" + std::filesystem::read_symlink("/proc/self/exe").string() +
               "\" --gtest_also_run_disabled_tests \"--gtest_filter=ServiceChild.DISABLED_Serves\"";
    }

    static int Register(const Text& commandLine = ServiceItself()) {
        return RegisterService({"Test", "A Test", commandLine, "LocalSystem", "", {}, true, false});
    }

    static ServiceState StateNow() {
        ServiceState state{};
        const int code = QueryServiceState("Test", state);
        EXPECT_EQ(code, state == ServiceState::NotInstalled ? kServiceDoesNotExist : 0);
        return state;
    }

    static bool RunUntilState(ServiceState state) {
        return test::RunUntil([&] { return FindServiceHolder().state == state; });
    }

    /// The state, and the results of what fails in it; 0 leaves an operation out.
    static void ExpectCodes(ServiceState state, int registering, int unregistering, int launching,
                            int stopping) {
        EXPECT_EQ(StateNow(), state);
        const std::pair<int, int (*)()> rows[] = {{registering, [] { return Register(); }},
                                                  {unregistering, [] { return UnregisterService("Test"); }},
                                                  {launching, [] { return LaunchService("Test"); }},
                                                  {stopping, [] { return SendStopControl("Test"); }}};
        for (const auto& [code, operation] : rows)
            EXPECT_EQ(code == 0 ? 0 : operation(), code);
    }
};

TEST_F(ServiceManager, EveryOperationInEveryState) {
    ExpectCodes(ServiceState::NotInstalled, 0, 1060, 1060, 1060);
    EXPECT_EQ(Register(), 0);
    ExpectCodes(ServiceState::Stopped, 1073, 0, 0, 1062);
    EXPECT_EQ(LaunchService("Test"), 0);
    ExpectCodes(ServiceState::Running, 1073, 0, 1056, 0);
    EXPECT_EQ(UnregisterService("Test"), 0);  // it still runs
    ExpectCodes(ServiceState::Running, 1072, 1072, 1072, 0);
    Keep("stop");
    EXPECT_EQ(SendStopControl("Test"), 0);
    EXPECT_TRUE(RunUntilState(ServiceState::StopPending));
    ExpectCodes(ServiceState::StopPending, 1072, 1072, 1072, 1061);
    Let("stop");
    EXPECT_TRUE(test::RunUntil([] { return !RegistryKeyExists(RegistryRoot::LocalMachine, kKey); }));
    ExpectCodes(ServiceState::NotInstalled, 0, 1060, 1060, 1060);
}

TEST_F(ServiceManager, TheNextOperationRemovesWhatAKilledServiceLeft) {
    for (const auto& next : {+[] { Register(); }, +[] { UnregisterService("Test"); },
                             +[] { LaunchService("Test"); }, +[] { SendStopControl("Test"); },
                             +[] { StateNow(); }, +[] { RegisteredServiceCommandLine("Test"); }}) {
        ASSERT_EQ(Register() + LaunchService("Test") + UnregisterService("Test"), 0);
        kill(FindServiceHolder().process, SIGKILL);
        ASSERT_TRUE(RunUntilState(ServiceState::Stopped));
        EXPECT_TRUE(RegistryKeyExists(RegistryRoot::LocalMachine, kKey));
        next();
        EXPECT_FALSE(ReadRegistry(RegistryRoot::LocalMachine, kKey, "DeleteFlag"));
        UnregisterService("Test");
    }
}

TEST_F(ServiceManager, AServiceStartedByHandCounts) {
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

TEST_F(ServiceManager, WhatCannotStart) {
    test::WriteHostFile(test::Root() + "/data", "no program");
    test::WriteHostFile(test::Root() + "/odd",
                        "\x7F"
                        "ELF, or not");
    chmod((test::Root() + "/data").c_str(), 0644);
    chmod((test::Root() + "/odd").c_str(), 0755);
    const std::pair<Text, int> rows[] = {{"\"/no such/program\" -service_mode", 2},
                                         {"\"\"", 2},
                                         {"/proc", 5},
                                         {test::Root() + "/data", 5},
                                         {test::Root() + "/odd", 193},
                                         {"/bin/false -service_mode", 1053}};
    for (const auto& [commandLine, code] : rows) {
        ASSERT_EQ(Register(commandLine), 0) << commandLine;
        EXPECT_EQ(LaunchService("Test"), code) << commandLine;
        EXPECT_EQ(StateNow(), ServiceState::Stopped);
        EXPECT_EQ(UnregisterService("Test"), 0);
    }
}

TEST_F(ServiceManager, HalfAnEntryIsNone) {
    WriteRegistry(RegistryRoot::LocalMachine, kKey, "DisplayName", Text("Half"));
    WriteRegistry(RegistryRoot::LocalMachine, kKey, "DeleteFlag", 1u);
    ExpectCodes(ServiceState::NotInstalled, 0, 1060, 1060, 1060);
    EXPECT_EQ(Register("/bin/true"), 0);
    EXPECT_EQ(RegisteredServiceCommandLine("Test"), "/bin/true");
    EXPECT_EQ(StateNow(), ServiceState::Stopped);
}

}  // namespace
}  // namespace rvl::platform
