#include "util/handle_error.h"

#include <new>

namespace rvl {
namespace {

ErrorSink* g_sink = nullptr;

[[noreturn]] void Raise(std::int32_t number, TextView source, TextView description) {
    throw Error(number, Text(source), Text(description));
}

}  // namespace

void InstallErrorSink(ErrorSink* sink) {
    g_sink = sink;
}

ErrorRecord CurrentError() {
    try {
        throw;
    } catch (const Error& error) {
        return error.Record();
    } catch (const std::bad_alloc&) {
        return {7, "RVLClient", "Out of memory", {}, 0, 0};
    } catch (const std::exception& error) {
        return {51, "RVLClient", Text("Internal error: ") + error.what(), {}, 0, 0};
    } catch (...) {
        return {51, "RVLClient", "Internal error", {}, 0, 0};
    }
}

void HandleError(TextView procedure) {
    if (g_sink != nullptr) g_sink->ReportError(procedure, CurrentError(), false);
}

void HandleErrorAndReRaise(TextView procedure) {
    const ErrorRecord record = CurrentError();
    if (g_sink != nullptr) g_sink->ReportError(procedure, record, true);
    throw Error(record);
}

void ErrAssert(bool condition, TextView message) {
    constexpr std::int32_t kAssertError = kApplicationErrorBase + 513;
    if (!condition) Raise(kAssertError, "Util.ErrAssert", "Assert failed: " + Text(message));
}

void RaiseInvalidCall(TextView source) {
    Raise(5, source, "Invalid procedure call or argument");
}
void RaiseOverflow(TextView source) {
    Raise(6, source, "Overflow");
}
void RaiseTypeMismatch(TextView source) {
    Raise(13, source, "Type mismatch");
}
void RaiseFileNotFound(TextView source) {
    Raise(53, source, "File not found");
}
void RaiseInvalidPropertyValue(TextView source) {
    Raise(380, source, "Invalid property value");
}
void RaiseNotSettableAtRunTime(TextView source) {
    Raise(382, source, "Set not supported at runtime");
}

}  // namespace rvl
