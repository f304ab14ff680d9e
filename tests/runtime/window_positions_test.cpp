#include "runtime/window_positions.h"

#include <gtest/gtest.h>

#include "tests/runtime/window_position_fakes.h"

namespace rvl {
namespace {

using namespace test;

TEST(WindowPositions, Load) {
    const std::tuple<const char*, bool, const char*, bool> rows[] = {
        {"-", false, "350 300 300 200 77 ", false},
        {"-,-,400,100", true, "350 300 300 200 77 ", false},
        {"10, 20 ,400,100,False,120", false, "10 20 400 100 120 ", true},
        {"10,20,-,-,yes,x", true, "10 20 300 200 77 max", true},
        {"10,x,400,100,1,", false, "10 350 400 100 77 max", false},
        {"10,20,wide,0,True", false, "10 20 300 200 77 max", false},
        {"99999999999,20,100,,no", false, "450 20 100 200 77 ", false},
        {"-400,20,300,100,0", false, "-400 20 300 100 77 ", true},  // on the other screen
        {"-800,20,300,100,", false, "350 350 300 100 77 ", true},   // beside both
        {"-799,799,300,100", false, "-799 799 300 100 77 ", true},
        {"5,800,300,100", false, "350 350 300 100 77 ", true},
        {"2147483647,-2147483648,2147483647,9", false, "-1073741323 395 2147483647 9 77 ", true}};
    for (const auto& [values, positionOnly, state, complete] : rows) {
        Store(values);
        FakeWindow window;
        EXPECT_EQ(LoadWindowPos(window, kSection, positionOnly), complete) << values;
        LoadSplitterPos(window, kSection, kSplitter);
        EXPECT_EQ(window.State(), state) << values;
    }
}

TEST(WindowPositions, Save) {
    Store("-,-,7");
    FakeWindow window;
    window.rectangle = {-3, 4, 500, 600};
    SaveWindowPos(window, kSection, true);
    EXPECT_EQ(Stored(), "-3,4,7,False,");
    window.maximized = true;
    SaveWindowPos(window, kSection);
    SaveSplitterPos(window, kSection, kSplitter);
    EXPECT_EQ(Stored(), "-3,4,500,600,True,77,");
}

}  // namespace
}  // namespace rvl
