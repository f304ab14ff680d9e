#pragma once

#include <cstdint>

// What the tools library exports beyond its registration: C functions, since each side has a runtime of its
// own.

namespace rvl {

/// Takes one value that a running Access tells of itself, both texts ended by NUL.
using TakeAccessValue = void (*)(void* taker, const char* name, const char* value);

/// Tells the values of the running Access of a main window: Version, Build, and CurrentProject (the full path
/// of the open database) when one is open. 0 when the window has no running Access.
using TellRunningAccess = int (*)(std::uint32_t accessWindow, TakeAccessValue take, void* taker);
inline constexpr const char* kTellRunningAccess = "TellRunningAccess";

inline constexpr const char* kAccessVersion = "Version";
inline constexpr const char* kAccessBuild = "Build";
inline constexpr const char* kAccessCurrentProject = "CurrentProject";

}  // namespace rvl
