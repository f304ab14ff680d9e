#include "runtime/access_object.h"

#include <gtest/gtest.h>

#include "runtime/process_state.h"
#include "tests/support/running_msaccess.h"

namespace rvl {
namespace {

TEST(AccessObject, WithoutTheLibraryThereIsNone) {
    State().Tools = nullptr;
    EXPECT_FALSE(GetAccessObjectByHwnd(1));
    EXPECT_NE(test::LogContent().find("Unable to load tools: "), std::string::npos);
    test::ClearLog();
    EXPECT_FALSE(GetAccessObjectByHwnd(1));
    EXPECT_EQ(test::LogContent(), "");  // it is asked every second
}

TEST(AccessObject, TheLibraryTellsOfTheRunningAccess) {
    Text problem;
    State().Tools = platform::DynamicLibrary::Load(RVL_TOOLS_LIBRARY, problem);
    ASSERT_TRUE(State().Tools) << problem;
    EXPECT_FALSE(GetAccessObjectByHwnd(1));
    const test::VirtualDisplay display;
    const test::RunningMsaccess access;
    const platform::WindowHandle window = access.Window();
    platform::AskToRegister(window);
    ASSERT_TRUE(test::RunUntil([&] { return GetAccessObjectByHwnd(window).has_value(); }));
    const auto object = GetAccessObjectByHwnd(window);
    EXPECT_EQ(object->version + "|" + object->build + "|" + object->currentProject.value_or("none"),
              "11.0|8166|C:\\fe\\orders.mdb");
    test::OrderMsaccess(window, "close database");
    EXPECT_TRUE(test::RunUntil([&] { return !GetAccessObjectByHwnd(window)->currentProject; }));
    platform::TerminateProcessOf(window);
    EXPECT_TRUE(test::RunUntil([&] { return !platform::IsWindow(window); }));
    EXPECT_FALSE(GetAccessObjectByHwnd(window));
    State().Tools = nullptr;
}

}  // namespace
}  // namespace rvl
