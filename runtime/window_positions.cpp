#include "runtime/window_positions.h"

#include <algorithm>
#include <optional>

#include "runtime/registry_value.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using Number = std::optional<std::int32_t>;

cRegistry Setting(const Text& section, const Text& name) {
    cRegistry registry;
    registry.ClassKey = platform::RegistryRoot::CurrentUser;
    registry.SectionKey = "Software\\Ravelin\\" + section;
    registry.ValueKey = name;
    registry.Default = Text();
    return registry;
}

Number ReadNumber(const Text& section, const Text& name) {
    const Text text = Setting(section, name).TextValue();
    try {
        return ToLong(text);
    } catch (const Error&) {
        return std::nullopt;
    }
}

/// No window has a size of nothing.
Number ReadSize(const Text& section, const Text& name) {
    const Number size = ReadNumber(section, name);
    return size > 0 ? size : std::nullopt;
}

void WriteNumber(const Text& section, const Text& name, std::int32_t number) {
    Setting(section, name).SetValue(NumberText(number));
}

std::int32_t Centred(std::int32_t screenStart, std::int32_t screenLength, std::int32_t length) {
    return screenStart + (screenLength - length) / 2;
}

/// In 64 bits: what is stored may be any number.
bool Overlaps(std::int64_t start, std::int64_t length, std::int64_t otherStart, std::int64_t otherLength) {
    return start < otherStart + otherLength && otherStart < start + length;
}

bool IsOnScreen(const PixelRectangle& rectangle, const std::vector<PixelRectangle>& screens) {
    return std::any_of(screens.begin(), screens.end(), [&](const PixelRectangle& screen) {
        return Overlaps(rectangle.left, rectangle.width, screen.left, screen.width) &&
               Overlaps(rectangle.top, rectangle.height, screen.top, screen.height);
    });
}

void Place(PixelRectangle& rectangle, Number left, Number top, const std::vector<PixelRectangle>& screens) {
    const PixelRectangle& primary = screens.front();
    const std::int32_t centreLeft = Centred(primary.left, primary.width, rectangle.width);
    const std::int32_t centreTop = Centred(primary.top, primary.height, rectangle.height);
    rectangle.left = left.value_or(centreLeft);
    rectangle.top = top.value_or(centreTop);
    if (IsOnScreen(rectangle, screens)) return;
    rectangle.left = centreLeft;
    rectangle.top = centreTop;
}

}  // namespace

/// Reads everything before it changes anything: an error leaves the window as it is.
bool LoadWindowPos(PlacedWindow& window, const Text& section, bool positionOnly) try {
    PixelRectangle rectangle = window.NormalRectangle();
    const Number width = positionOnly ? rectangle.width : ReadSize(section, "Width");
    const Number height = positionOnly ? rectangle.height : ReadSize(section, "Height");
    const Number left = ReadNumber(section, "Left"), top = ReadNumber(section, "Top");
    const bool maximized = toBool(Setting(section, "Maximized").TextValue());
    const std::vector<PixelRectangle> screens = window.Screens();
    ErrAssert(!screens.empty(), "there is no screen");
    rectangle.width = width.value_or(rectangle.width);
    rectangle.height = height.value_or(rectangle.height);
    Place(rectangle, left, top, screens);
    window.SetNormalRectangle(rectangle);
    if (maximized) window.Maximize();
    return width && height && left && top;
} catch (...) {
    HandleError("Util.LoadWindowPos");
    return false;
}

void SaveWindowPos(const PlacedWindow& window, const Text& section, bool positionOnly) try {
    const PixelRectangle rectangle = window.NormalRectangle();
    const bool maximized = window.IsMaximized();
    WriteNumber(section, "Left", rectangle.left);
    WriteNumber(section, "Top", rectangle.top);
    if (!positionOnly) {
        WriteNumber(section, "Width", rectangle.width);
        WriteNumber(section, "Height", rectangle.height);
    }
    Setting(section, "Maximized").SetValue(Text(maximized ? "True" : "False"));
} catch (...) {
    HandleError("Util.SaveWindowPos");
}

void LoadSplitterPos(PositionedSplitter& splitter, const Text& section, const Text& valueName) try {
    if (const Number position = ReadNumber(section, valueName)) splitter.SetPosition(*position);
} catch (...) {
    HandleError("RegistrySettings.LoadSplitterPos");
}

void SaveSplitterPos(const PositionedSplitter& splitter, const Text& section, const Text& valueName) try {
    WriteNumber(section, valueName, splitter.Position());
} catch (...) {
    HandleError("RegistrySettings.SaveSplitterPos");
}

}  // namespace rvl
