#pragma once

#include "platform/text.h"

namespace rvl {

/// True for a message that a standard box would show beyond the edges of the screen.
bool IsLongMessage(const Text& prompt);

/// Shows a message box of our own and returns the button pressed, for what the toolkit's does not do: a long
/// message, which can be scrolled here, and one without an icon.
int ShowOwnMessageDialog(const Text& prompt, int style, const Text& title);

}  // namespace rvl
