#pragma once

#include <wx/window.h>

#include "platform/accessible_name.h"

namespace rvl {

/// What a screen reader calls a control that shows no label of its own.
inline void NameForScreenReaders(const wxWindow& control, const Text& name) {
    platform::SetAccessibleName(control.GetHandle(), name);
}

}  // namespace rvl
