#include "runtime/window_positions.h"

#include <gtest/gtest.h>

#include "platform/sqlite.h"
#include "tests/runtime/window_position_fakes.h"
#include "tests/support/posix/workstation.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using namespace test;

/// A registry without its table stands for one that is broken.
TEST(WindowPositions, AnErrorIsReportedAndLeavesTheWindow) {
    Store("10,20,400,100,1,120");
    platform::SqliteConnection store(test::Root() + "/registry.db", platform::SqliteConnection::Missing::Fail,
                                     std::chrono::seconds(5));
    store.Execute("ALTER TABLE RegistryValues RENAME TO Away");
    FakeWindow window;
    EXPECT_FALSE(LoadWindowPos(window, kSection));
    SaveWindowPos(window, kSection);
    LoadSplitterPos(window, kSection, kSplitter);
    SaveSplitterPos(window, kSection, kSplitter);
    store.Execute("ALTER TABLE Away RENAME TO RegistryValues");
    EXPECT_EQ(window.State(), "5 5 300 200 77 ");
    for (const char* name : {"Util.LoadWindowPos", "Util.SaveWindowPos", "RegistrySettings.LoadSplitterPos",
                             "RegistrySettings.SaveSplitterPos"})
        EXPECT_NE(test::LogContent().find(name), std::string::npos) << name;
}

}  // namespace
}  // namespace rvl
