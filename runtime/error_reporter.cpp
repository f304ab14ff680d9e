#include "runtime/error_reporter.h"

#include <utility>

#include "platform/process.h"
#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "runtime/process_state.h"
#include "runtime/terminate.h"
#include "util/scoped_state.h"
#include "util/text_functions.h"

#ifndef RVL_SUPPORT_PAGE
#define RVL_SUPPORT_PAGE "https://support.example.com/rvlclient"
#endif

namespace rvl {
namespace {

constexpr const char* kSupportPage = RVL_SUPPORT_PAGE;
constexpr const char* kLineEnd = "\r\n";
constexpr const char* kEmptyLine = "\r\n\r\n";

Text WithLine(TextView procedure, const ErrorRecord& record) {
    return Text(procedure) + (record.Erl > 0 ? ":" + NumberText(record.Erl) : Text());
}

void ShowErrorDialog(TextView procedure, const ErrorRecord& record) try {
    if (State().SuppressErrorDialog) return;
    CurrentDialogs().ShowErrorDialog({VersionString(), HexString(record.Number), record.Source,
                                      record.Description, WithLine(procedure, record)});
} catch (...) {
    HandleError("frmError.ShowModal");
}

}  // namespace

Text ErrorText(const ErrorRecord& record) {
    return "Error #" + NumberText(record.Number) + " from " + record.Source + ": " + record.Description;
}

Text ErrorReporter::Explain(const ErrorRecord& record, TextView procedure) const {
    try {
        return m_explainer ? m_explainer(record.Number, procedure) : Text();
    } catch (...) {  // the error itself matters more than its explanation
        return {};
    }
}

Text ErrorReporter::Compose(TextView procedure, const ErrorRecord& record, TextView whileText,
                            TextView suffix) const {
    Text location;
    if (!whileText.empty()) location += " while " + Text(whileText);
    if (!record.Source.empty()) location += " from " + record.Source;
    if (!procedure.empty() && procedure != record.Source) location += " via " + Text(procedure);
    if (record.Erl > 0) location += ":" + NumberText(record.Erl);

    Text description = record.Description + Text(suffix);
    if (const Text hint = Explain(record, procedure); !hint.empty())
        description += (description.empty() ? "" : kEmptyLine) + hint;
    return "Error " + HexString(record.Number) + location + kEmptyLine + description;
}

void ErrorReporter::ReportError(TextView procedure, const ErrorRecord& record, bool reRaise) {
    ReportError(procedure, record, reRaise, "", "");
}

void ErrorReporter::ReportError(TextView procedure, const ErrorRecord& record, bool reRaise,
                                TextView whileText, TextView suffix) {
    {
        const ScopedDepth report(State().ErrorDepth);
        const int depth = State().ErrorDepth;
        if (depth > 2 && !reRaise) Terminate(kExitFatal, false, true);
        if (depth == 1) ReportFirst(procedure, record, Compose(procedure, record, whileText, suffix));
        if (depth == 2) ReportNested(procedure, record, Compose(procedure, record, whileText, suffix));
    }
    if (reRaise) throw Error(record);
}

void ErrorReporter::ReportFirst(TextView procedure, const ErrorRecord& record, const Text& text) {
    Log(text);
    if (!State().ServiceMode) ShowErrorDialog(procedure, record);
}

void ErrorReporter::ReportNested(TextView procedure, const ErrorRecord& record, const Text& text) {
    Log(text);
    if (State().ServiceMode) {
        Log("Service terminating due to above error");
        Terminate(kExitFatal);
    }
    CriticalErrorBox(procedure, record, text);
}

void ErrorReporter::CriticalErrorBox(TextView procedure, const ErrorRecord& record, const Text& text) try {
    const Text hint = Explain(record, procedure);
    const Text prompt = text + kEmptyLine + (hint.empty() ? Text() : hint + kEmptyLine) +
                        "Click [Yes] to visit our support site" + kLineEnd +
                        "Click [No] to attempt to continue past this error" + kLineEnd +
                        "Click [Cancel] to quit the application now without saving";
    for (;;) {
        const int button = MsgBox(prompt, kButtonsYesNoCancel + kIconCritical, "Critial Error");
        if (button == kCancel) Terminate(kExitUserQuit);
        // Where nobody can answer, Yes would come back for ever: go on past the error instead.
        if (button != kYes || !CurrentDialogs().IsInteractive()) return;
        OpenSupportPage();
    }
} catch (...) {
    HandleError("Globals.CriticalErrorBox");
}

void ExitFromErrorDialog() {
    const Text title = State().ApplicationTitle;
    const int button = MsgBox("Are you sure you want to exit " + title + "?" + kEmptyLine +
                                  "Warning: Any unsaved data will be lost",
                              kButtonsYesNo + kIconQuestion + kDefaultSecond, "Exit " + title + " now?");
    if (button == kYes) Terminate(kExitUserQuit);
}

void OpenSupportPage() {
    if (!platform::OpenDocument(kSupportPage)) MsgBox(Text("Unable to load ") + kSupportPage, kIconCritical);
}

}  // namespace rvl
