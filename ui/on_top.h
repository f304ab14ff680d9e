#pragma once

#include <wx/frame.h>

namespace rvl {

/// The style of a window that stays above all others.
inline constexpr long kOnTopStyle =
    wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX | wxRESIZE_BORDER | wxTAB_TRAVERSAL | wxSTAY_ON_TOP;

/// Lets it be used while the process shows a message box.
void MakeIndependent(wxTopLevelWindow& window);

/// Hides and destroys a window once the caller has returned.
void DestroyLater(wxTopLevelWindow& window);

/// Shows it there, in the middle of the screen, without taking the keyboard from the user's work. Where
/// others are shown already it stands a little further down, so that none hides another.
void ShowOnTopWithoutFocus(wxFrame& window);

}  // namespace rvl
