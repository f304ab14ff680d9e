#include "runtime/window_positions.h"

#include <gtest/gtest.h>

#include "platform/sqlite.h"
#include "runtime/registry_value.h"
#include "tests/support/workstation.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr const char* kSection = "Client\\WindowPos";
constexpr const char* kSplitter = "Advanced Splitter";
constexpr const char* kNames[] = {"Left", "Top", "Width", "Height", "Maximized", kSplitter};

cRegistry Value(const Text& name) {
    cRegistry value;
    value.ClassKey = platform::RegistryRoot::CurrentUser;
    value.SectionKey = "Software\\Ravelin\\Client\\WindowPos";
    value.ValueKey = name;
    return value;
}

/// The values in the order of kNames, between commas; "-" for one that is not there.
void Store(const Text& values) {
    Value("").DeleteKey();
    const char* const* name = kNames;
    for (const TextView text : SplitAt(values, ",")) {
        if (text != "-") Value(*name).SetValue(Text(text));
        ++name;
    }
}

Text Stored() {
    Text values;
    for (const char* name : kNames)
        if (const auto value = platform::ReadRegistry(Value("").ClassKey, Value("").SectionKey, name))
            values += std::get<Text>(*value) + ",";
    return values;
}

/// On a screen of 1001 x 800 with another one to the left of it.
struct FakeWindow : PlacedWindow, PositionedSplitter {
    PixelRectangle rectangle{5, 5, 300, 200};
    bool maximized = false;
    std::int32_t position = 77;

    PixelRectangle NormalRectangle() const override { return rectangle; }
    void SetNormalRectangle(const PixelRectangle& wanted) override { rectangle = wanted; }
    bool IsMaximized() const override { return maximized; }
    void Maximize() override { maximized = true; }
    std::vector<PixelRectangle> Screens() const override { return {{0, 0, 1001, 800}, {-500, 0, 500, 800}}; }
    std::int32_t Position() const override { return position; }
    void SetPosition(std::int32_t wanted) override { position = wanted; }

    Text State() const {
        Text state;
        for (const auto number : {rectangle.left, rectangle.top, rectangle.width, rectangle.height, position})
            state += NumberText(number) + " ";
        return state + (maximized ? "max" : "");
    }
};

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
