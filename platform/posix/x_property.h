#pragma once

#include <X11/Xlib.h>

#include <optional>
#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// A property of type STRING (ISO 8859-1) or UTF8_STRING; what no Text can hold reads "?". None when the
/// window has no such property.
std::optional<Text> TextProperty(Display* display, Window window, const char* name);

/// A property of 32-bit values of this type; empty when the window has none.
std::vector<unsigned long> ValuesProperty(Display* display, Window window, const char* name, Atom type);

/// The first of them; 0 when there is none.
unsigned long ValueProperty(Display* display, Window window, const char* name, Atom type);

bool HasProperty(Display* display, Window window, const char* name);

/// Memory that Xlib has allocated.
struct XFreeDeleter {
    void operator()(void* memory) const { XFree(memory); }
};

}  // namespace rvl::platform
