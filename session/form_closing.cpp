#include "session/form_closing.h"

#include "runtime/log_file.h"
#include "runtime/terminate.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

std::int64_t CountForms(const SwitchboardView& view) {
    return static_cast<std::int64_t>(view.LoadedForms().size());
}

void CloseForm(SwitchboardView& view, const Text& form) {
    Log("Attempting to close \"" + form + "\"");
    view.UnloadForm(form);
}

/// How many forms less there are after one attempt; less than none when closing has opened some.
std::int64_t CloseOtherForms(SwitchboardView& view) {
    const std::vector<Text> forms = view.LoadedForms();
    const auto count = static_cast<std::int64_t>(forms.size());
    Log("There are " + NumberText(count) + " forms to close");
    for (const Text& form : forms) {
        if (form == kSwitchboardForm)
            Log("Will close \"" + form + "\" later");
        else
            CloseForm(view, form);
    }
    const std::int64_t closed = count - CountForms(view);
    Log("Successfully closed " + NumberText(closed) + " forms");
    return closed;
}

}  // namespace

void CloseAllForms(SwitchboardView& view) {
    // A form may stay only because of another one: as long as anything changes, it is worth another attempt.
    while (CloseOtherForms(view) != 0) {
    }
    CloseForm(view, kSwitchboardForm);
    const std::int64_t left = CountForms(view);
    if (left == 0) return;
    Log("Forcing close of switchboard with " + NumberText(left) + " forms still open");
    Terminate(kExitNormal);
}

}  // namespace rvl
