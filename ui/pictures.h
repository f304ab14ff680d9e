#pragma once

#include <wx/bitmap.h>
#include <wx/iconbndl.h>

namespace rvl {

/// The program's own icon, in the sizes that title bars and task lists take.
wxIconBundle ApplicationIcons();

/// What stands for a front end without an icon of its own; a square of `size` pixels.
wxBitmap FrontendPicture(int size);

}  // namespace rvl
