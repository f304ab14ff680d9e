#include "runtime/message_box.h"

#include <array>

#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/scoped_state.h"

namespace rvl {
namespace {

int Show(const Text& prompt, int style, const Text& title) {
    const ScopedDepth open(State().MsgBoxDepth);
    const bool plain = State().MsgBoxDepth >= 2;
    return CurrentDialogs().ShowMessageBox(prompt, style, title, plain);
}

}  // namespace

Text ButtonName(int button) {
    static constexpr std::array<const char*, 7> kNames = {"OK",     "Cancel", "Abort", "Retry",
                                                          "Ignore", "Yes",    "No"};
    const bool known = button >= kOk && button <= kNo;
    return known ? kNames[static_cast<std::size_t>(button - 1)] : "Unknown";
}

int MsgBox(const Text& prompt, int style, const Text& title) try {
    const int button = Show(prompt, style, title);
    if (!State().ServiceMode) Log("[GUI] MsgBox: \"" + prompt + "\": " + ButtonName(button));
    return button;
} catch (...) {
    HandleError("Globals.MsgBox");
    return DefaultButton(style);
}

}  // namespace rvl
