#pragma once

#include "platform/text.h"

namespace rvl {

// What a user is told whose front end cannot be started, with the critical icon.

/// The user's helper is not there, but it is being started.
inline constexpr const char* kTemporarilyUnavailable =
    "The application is temporarily unavailable.\r\n\r\nPlease try again in a few moments.";

inline Text CurrentlyUnavailable(const Text& reason) {
    return "The application is currently unavailable.\r\n\r\n" + reason;
}

}  // namespace rvl
