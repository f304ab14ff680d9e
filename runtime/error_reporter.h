#pragma once

#include <functional>

#include "util/handle_error.h"

namespace rvl {

/// The one error reporter of the process. It logs every error; at depth 1 an interactive process also shows
/// the error dialog. An error while reporting falls back to a plain critical box (the service ends with exit
/// code 1); a third nested error ends the process. An error to be re-raised leaves as an exception.
class ErrorReporter : public ErrorSink {
 public:
    /// Text that explains an error number to an administrator; empty when it has nothing to say.
    using Explainer = std::function<Text(std::int32_t number, TextView procedure)>;

    void SetExplainer(Explainer explainer) { m_explainer = std::move(explainer); }

    void ReportError(TextView procedure, const ErrorRecord& record, bool reRaise) override;
    void ReportError(TextView procedure, const ErrorRecord& record, bool reRaise, TextView whileText,
                     TextView suffix);

 private:
    Text Explain(const ErrorRecord& record, TextView procedure) const;
    Text Compose(TextView procedure, const ErrorRecord& record, TextView whileText, TextView suffix) const;
    void ReportFirst(TextView procedure, const ErrorRecord& record, const Text& text);
    void ReportNested(TextView procedure, const ErrorRecord& record, const Text& text);
    void CriticalErrorBox(TextView procedure, const ErrorRecord& record, const Text& text);

    Explainer m_explainer;
};

/// "Error #" + number + " from " + source + ": " + description, as errors are told to the server.
Text ErrorText(const ErrorRecord& record);

/// What the "E&xit" button of the error dialog does: asks, and on Yes ends the process with exit code 2.
void ExitFromErrorDialog();

/// Opens the support web page; a message box tells when that fails.
void OpenSupportPage();

}  // namespace rvl
