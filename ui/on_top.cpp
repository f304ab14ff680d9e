#include "ui/on_top.h"

#include <wx/app.h>

#include <algorithm>

#include "platform/modal_windows.h"

namespace rvl {
namespace {

/// Every one of these windows that is shown, and this one not yet.
int WindowsOnTop() {
    return static_cast<int>(std::count_if(
        wxTopLevelWindows.begin(), wxTopLevelWindows.end(),
        [](const wxWindow* window) { return window->IsShown() && window->HasFlag(wxSTAY_ON_TOP); }));
}

}  // namespace

void MakeIndependent(wxTopLevelWindow& window) {
    window.SetExtraStyle(window.GetExtraStyle() | wxTOPLEVEL_EX_DIALOG);  // its close button works then, too
    platform::SeparateFromModalWindows(window.GetHandle());
}

/// The toolkit leaves the last visible window to its idle time, which may be long in coming.
void DestroyLater(wxTopLevelWindow& window) {
    window.Hide();
    window.Destroy();
    wxWakeUpIdle();
}

void ShowOnTopWithoutFocus(wxFrame& window) {
    if (window.IsShown()) return;
    constexpr int kPlaces = 8;
    const int step = window.FromDIP(28) * (WindowsOnTop() % kPlaces);
    window.CentreOnScreen();
    window.Move(window.GetPosition() + wxPoint(step, step));
    window.ShowWithoutActivating();
}

}  // namespace rvl
