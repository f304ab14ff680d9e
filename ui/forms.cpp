#include "ui/forms.h"

#include <wx/settings.h>

#include "ui/main_window.h"
#include "ui/pictures.h"
#include "ui/wx_text.h"

namespace rvl {
namespace {

bool IsLoadedForm(const wxWindow& window) {
    return window.GetName().StartsWith("frm") && window.IsShown();
}

void Unload(wxWindow& window) {
    if (auto* main = dynamic_cast<MainWindow*>(&window))
        main->UnloadFor(UnloadMode::ByCode);
    else
        window.Close(true);
}

}  // namespace

void Furnish(wxFrame& form) {
    form.SetIcons(ApplicationIcons());
    form.SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
}

std::vector<Text> LoadedForms() {
    std::vector<Text> names;
    for (const wxWindow* window : wxTopLevelWindows)
        if (IsLoadedForm(*window)) names.push_back(FromWx(window->GetName()));
    return names;
}

void UnloadMainWindows(UnloadMode mode) {
    for (wxWindow* window : wxTopLevelWindows)
        if (auto* main = dynamic_cast<MainWindow*>(window)) main->UnloadFor(mode);
}

void UnloadForm(const Text& name) {
    for (wxWindow* window : wxTopLevelWindows)
        if (IsLoadedForm(*window) && window->GetName() == ToWx(name)) return Unload(*window);
}

}  // namespace rvl
