#include "session/known_dialog.h"

#include <algorithm>

namespace rvl {
namespace {

bool IsAccessDialog(const Desktop& desktop, WindowHandle window) {
    return desktop.HasClass(window, "#32770") && desktop.WindowText(window) == "Microsoft Access";
}

/// What the dialog has to say; empty when it has no such text.
Text MessageOf(const Desktop& desktop, WindowHandle dialog) {
    const std::vector<WindowHandle> children = desktop.ChildWindows(dialog);
    const auto label = std::ranges::find_if(
        children, [&](WindowHandle child) { return desktop.HasClass(child, "MSOUNISTAT"); });
    return label == children.end() ? Text() : desktop.WindowText(*label);
}

void CloseIfKnown(Desktop& desktop, WindowHandle dialog) {
    if (MessageOf(desktop, dialog).starts_with("You can't make changes")) desktop.RequestClose(dialog);
}

}  // namespace

void DoCantMakeChangesCheck(Desktop& desktop, WindowHandle window) {
    if (window != 0 && IsAccessDialog(desktop, window)) CloseIfKnown(desktop, window);
}

void CloseKnownDialogs(Desktop& desktop, const std::vector<WindowHandle>& topLevelWindows) {
    const WindowHandle foreground = desktop.Foreground();
    DoCantMakeChangesCheck(desktop, foreground);
    const auto dialog = std::ranges::find_if(
        topLevelWindows, [&](WindowHandle window) { return IsAccessDialog(desktop, window); });
    if (dialog != topLevelWindows.end() && *dialog != foreground) CloseIfKnown(desktop, *dialog);
}

}  // namespace rvl
