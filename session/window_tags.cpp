#include "session/window_tags.h"

namespace rvl {
namespace {

/// An identifier is kept twice, so that it outlives the loss of one copy.
struct IdentifierTag {
    const char* name;
    const char* backup;
};

constexpr IdentifierTag kFrontendId{"RVL_FrontendID", "RVL_FrontendID_Backup"};
constexpr IdentifierTag kFrontendVersionId{"RVL_FrontendVersionID", "RVL_FrontendVersionID_Backup"};
constexpr const char* kStartTickHigh = "RVL_StartTick_High";
constexpr const char* kStartTickLow = "RVL_StartTick_Low";
constexpr int kHalfBits = 32;

std::int32_t Read(const Desktop& desktop, WindowHandle window, const IdentifierTag& tag) {
    const std::uint32_t value = desktop.Property(window, tag.name);
    const std::uint32_t backup = desktop.Property(window, tag.backup);
    return static_cast<std::int32_t>(backup != 0 ? backup : value);
}

void Write(Desktop& desktop, WindowHandle window, const IdentifierTag& tag, std::int32_t value) {
    desktop.SetProperty(window, tag.name, static_cast<std::uint32_t>(value));
    desktop.SetProperty(window, tag.backup, static_cast<std::uint32_t>(value));
}

}  // namespace

std::int32_t FrontendIdOf(const Desktop& desktop, WindowHandle window) {
    return Read(desktop, window, kFrontendId);
}

std::int32_t FrontendVersionIdOf(const Desktop& desktop, WindowHandle window) {
    return Read(desktop, window, kFrontendVersionId);
}

std::uint64_t StartTickOf(const Desktop& desktop, WindowHandle window) {
    const std::uint64_t high = desktop.Property(window, kStartTickHigh);
    return high << kHalfBits | desktop.Property(window, kStartTickLow);
}

void TagFrontend(Desktop& desktop, WindowHandle window, std::int32_t frontendId) {
    Write(desktop, window, kFrontendId, frontendId);
}

void TagFrontendVersion(Desktop& desktop, WindowHandle window, std::int32_t frontendVersionId) {
    Write(desktop, window, kFrontendVersionId, frontendVersionId);
}

void TagStartTick(Desktop& desktop, WindowHandle window, std::uint64_t tick) {
    desktop.SetProperty(window, kStartTickHigh, static_cast<std::uint32_t>(tick >> kHalfBits));
    desktop.SetProperty(window, kStartTickLow, static_cast<std::uint32_t>(tick));
}

}  // namespace rvl
