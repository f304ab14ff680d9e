#pragma once

#include "platform/error.h"

namespace rvl {

/// Who reports the errors that procedures catch: the error reporter of runtime/, once it is installed.
class ErrorSink {
 public:
    virtual ~ErrorSink() = default;

    /// Reports one error under the procedure's qualified name; raises it again when asked to.
    virtual void ReportError(TextView procedure, const ErrorRecord& record, bool reRaise) = 0;
};

/// The sink is not owned; null uninstalls it, errors that are not to be re-raised are then dropped.
void InstallErrorSink(ErrorSink* sink);

/// To be called inside a catch block: reports the current exception under "Module.Procedure" and returns.
void HandleError(TextView procedure);

/// The same for the procedures whose errors must reach their caller after being reported.
[[noreturn]] void HandleErrorAndReRaise(TextView procedure);

/// Inside a catch block: the current exception as a record. Foreign exceptions become 7 "Out of memory"
/// (std::bad_alloc) or 51 "Internal error".
ErrorRecord CurrentError();

/// Raises an error whose description is "Assert failed: " + message when the condition is false.
void ErrAssert(bool condition, TextView message);

/// Errors of the runtime with their standard numbers and texts.
[[noreturn]] void RaiseInvalidCall(TextView source);           // 5
[[noreturn]] void RaiseOverflow(TextView source);              // 6
[[noreturn]] void RaiseTypeMismatch(TextView source);          // 13
[[noreturn]] void RaiseFileNotFound(TextView source);          // 53
[[noreturn]] void RaiseInvalidPropertyValue(TextView source);  // 380
[[noreturn]] void RaiseNotSettableAtRunTime(TextView source);  // 382

}  // namespace rvl
