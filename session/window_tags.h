#pragma once

#include "session/desktop.h"

namespace rvl {

// What an Access main window carries of the front end it was started on, for as long as it lives; a window
// without tags reads as 0 throughout.

std::int32_t FrontendIdOf(const Desktop& desktop, WindowHandle window);
std::int32_t FrontendVersionIdOf(const Desktop& desktop, WindowHandle window);

/// The tick count (util/tick_count.h) at which the window was found.
std::uint64_t StartTickOf(const Desktop& desktop, WindowHandle window);

void TagFrontend(Desktop& desktop, WindowHandle window, std::int32_t frontendId);
void TagFrontendVersion(Desktop& desktop, WindowHandle window, std::int32_t frontendVersionId);
void TagStartTick(Desktop& desktop, WindowHandle window, std::uint64_t tick);

}  // namespace rvl
