#include "runtime/dialogs.h"

#include <array>

#include "platform/process.h"

namespace rvl {
namespace {

class LineDialogs : public Dialogs {
 public:
    int ShowMessageBox(const Text& prompt, int style, const Text& title, bool) override {
        platform::WriteStandardError(title + ": " + prompt);
        return DefaultButton(style);
    }

    void ShowErrorDialog(const ErrorDialogTexts& texts) override {
        platform::WriteStandardError("Error " + texts.errorCode + " from " + texts.source + " in " +
                                     texts.function + ": " + texts.message);
    }

    bool IsInteractive() const override { return false; }
};

Dialogs* g_dialogs = nullptr;

constexpr std::array<std::array<int, 3>, 6> kButtonSets = {{
    {kOk, kOk, kOk},
    {kOk, kCancel, kCancel},
    {kAbort, kRetry, kIgnore},
    {kYes, kNo, kCancel},
    {kYes, kNo, kNo},
    {kRetry, kCancel, kCancel},
}};

}  // namespace

Dialogs& StandardErrorDialogs() {
    static LineDialogs dialogs;
    return dialogs;
}

Dialogs& CurrentDialogs() {
    return g_dialogs != nullptr ? *g_dialogs : StandardErrorDialogs();
}

void InstallDialogs(Dialogs* dialogs) {
    g_dialogs = dialogs;
}

int DefaultButton(int style) {
    const std::size_t set = static_cast<std::size_t>(style) & 0xF;
    const int position = (style & kDefaultThird) != 0 ? 2 : (style & kDefaultSecond) != 0 ? 1 : 0;
    return set < kButtonSets.size() ? kButtonSets[set][static_cast<std::size_t>(position)] : kOk;
}

/// The last one: Cancel, No, Ignore, or the only one. In the box after an error, whose Cancel would end the
/// process with an exit code of its own, it is No.
int DismissingButton(int style) {
    const std::size_t set = static_cast<std::size_t>(style) & 0xF;
    if (set == static_cast<std::size_t>(kButtonsYesNoCancel)) return kNo;
    return set < kButtonSets.size() ? kButtonSets[set].back() : kOk;
}

}  // namespace rvl
