#pragma once

#include "runtime/registry_value.h"
#include "runtime/window_positions.h"
#include "util/text_functions.h"

namespace rvl::test {

inline constexpr const char* kSection = "Client\\WindowPos";
inline constexpr const char* kSplitter = "Advanced Splitter";
inline constexpr const char* kNames[] = {"Left", "Top", "Width", "Height", "Maximized", kSplitter};

inline cRegistry Value(const Text& name) {
    cRegistry value;
    value.ClassKey = platform::RegistryRoot::CurrentUser;
    value.SectionKey = "Software\\Ravelin\\Client\\WindowPos";
    value.ValueKey = name;
    return value;
}

/// The values in the order of kNames, between commas; "-" for one that is not there.
inline void Store(const Text& values) {
    Value("").DeleteKey();
    const char* const* name = kNames;
    for (const TextView text : SplitAt(values, ",")) {
        if (text != "-") Value(*name).SetValue(Text(text));
        ++name;
    }
}

inline Text Stored() {
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

}  // namespace rvl::test
