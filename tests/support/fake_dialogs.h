#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "runtime/dialogs.h"

namespace rvl::test {

/// Stands for the windows of an interactive process: remembers what was shown and answers as told, else with
/// the default button. Installed for as long as it lives.
class FakeDialogs : public Dialogs {
 public:
    struct Box {
        Text prompt;
        int style;
        Text title;
        bool plain;
    };

    FakeDialogs() { InstallDialogs(this); }
    ~FakeDialogs() override { InstallDialogs(nullptr); }

    int ShowMessageBox(const Text& prompt, int style, const Text& title, bool plain) override {
        boxes.push_back({prompt, style, title, plain});
        if (onBox) onBox();
        if (answers.empty()) return DefaultButton(style);
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }

    void ShowErrorDialog(const ErrorDialogTexts& texts) override {
        dialogs.push_back(texts);
        if (onDialog) onDialog();
    }

    bool IsInteractive() const override { return true; }

    std::vector<Box> boxes;
    std::vector<ErrorDialogTexts> dialogs;
    std::deque<int> answers;
    std::function<void()> onBox, onDialog;
};

}  // namespace rvl::test
