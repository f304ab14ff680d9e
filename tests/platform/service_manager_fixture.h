#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/registry.h"
#include "platform/service_manager.h"
#include "tests/support/child_process.h"
#include "tests/support/workstation.h"

namespace rvl::platform {

inline constexpr const char* kKey = "SYSTEM\\CurrentControlSet\\Services\\Test";

inline std::string StepFile(const char* name) {
    return test::DriveC() + "/service/" + name;
}

inline bool Exists(const char* name) {
    return std::filesystem::exists(StepFile(name));
}

class ServiceManager : public testing::Test {
 protected:
    void SetUp() override {
        test::SetEnvironment("RVL_TEST_CHILD", "1");
        for (const char* step : {"start", "stop"})
            Let(step);
    }

    void TearDown() override {
        if (Exists("process")) test::KillProcess(ServiceProcess());
        EXPECT_TRUE(test::RunUntil([] { return StateNow() <= ServiceState::Stopped; }));
        UnregisterService("Test");
        test::UnsetEnvironment("RVL_TEST_CHILD");
        test::EmptyDriveC();
    }

    static std::uint32_t ServiceProcess() {
        return static_cast<std::uint32_t>(std::stoul(test::ReadHostFile(StepFile("process"))));
    }

    static void Let(const char* step) { test::WriteHostFile(StepFile(step), ""); }
    static void Keep(const char* step) { std::filesystem::remove(StepFile(step)); }

    static Text ServiceItself() {
        return "\"" + test::ThisProgram() + "\" " + test::ChildArguments("ServiceChild.DISABLED_Serves");
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
        return test::RunUntil([&] { return StateNow() == state; });
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

}  // namespace rvl::platform
