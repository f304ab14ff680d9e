#pragma once

#include <wx/bitmap.h>

#include "platform/text.h"

namespace rvl {

/// The picture of an icon file (.ico or .png) as a square of `size` pixels, made smaller where it has to be.
/// An invalid bitmap for a file that is missing, broken or larger than any icon: that is no error.
wxBitmap IconPicture(const Text& path, int size);

}  // namespace rvl
