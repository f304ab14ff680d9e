#include <thread>

#include "platform/event_loop.h"
#include "platform/process.h"
#include "platform/service_process.h"
#include "tests/platform/service_manager_fixture.h"

namespace rvl::platform {
namespace {

void AwaitFile(const char* name) {
    while (!Exists(name))
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

/// Not a test: the service itself, this program again. It starts and stops as far as it is let.
TEST(ServiceChild, DISABLED_Serves) {
    test::WriteHostFile(StepFile("process"), std::to_string(ProcessId()));
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

TEST_F(ServiceManager, EveryOperationInEveryState) {
    ExpectCodes(ServiceState::NotInstalled, 0, 1060, 1060, 1060);
    EXPECT_EQ(Register(), 0);
    ExpectCodes(ServiceState::Stopped, 1073, 0, 0, 1062);
    EXPECT_EQ(LaunchService("Test"), 0);
    ExpectCodes(ServiceState::Running, 1073, 0, 1056, 0);
    EXPECT_EQ(UnregisterService("Test"), 0);  // it still runs
    ExpectCodes(ServiceState::Running, 1072, 1072, 0, 0);
    Keep("stop");
    EXPECT_EQ(SendStopControl("Test"), 0);
    EXPECT_TRUE(RunUntilState(ServiceState::StopPending));
    ExpectCodes(ServiceState::StopPending, 1072, 1072, 0, 1061);
    Let("stop");
    EXPECT_TRUE(test::RunUntil([] { return !RegistryKeyExists(RegistryRoot::LocalMachine, kKey); }));
    ExpectCodes(ServiceState::NotInstalled, 0, 1060, 1060, 1060);
}

TEST_F(ServiceManager, WhatIsRegisteredReadsBack) {
    EXPECT_EQ(RegisteredServiceCommandLine("Test"), "");
    ASSERT_EQ(RegisterService({"Test",
                               "A T\xE9st",
                               "\"C:\\no one\\x.exe\" -service_mode",
                               "LocalSystem",
                               "",
                               {"A", "B"},
                               true,
                               false}),
              0);
    EXPECT_EQ(RegisteredServiceCommandLine("Test"), "\"C:\\no one\\x.exe\" -service_mode");
    EXPECT_EQ(ReadRegistry(RegistryRoot::LocalMachine, kKey, "DisplayName"),
              RegistryValue(Text("A T\xE9st")));
    for (const auto& [name, number] : {std::pair{"Start", 2U}, {"Type", 16U}, {"ErrorControl", 1U}})
        EXPECT_EQ(ReadRegistry(RegistryRoot::LocalMachine, kKey, name), RegistryValue(number)) << name;
    EXPECT_EQ(LaunchService("Test"), 2);
    EXPECT_EQ(StateNow(), ServiceState::Stopped);
}

}  // namespace
}  // namespace rvl::platform
