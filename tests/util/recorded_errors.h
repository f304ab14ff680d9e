#pragma once

#include <vector>

#include "util/handle_error.h"

namespace rvl::test {

/// Collects what is reported while it lives, as "procedure: number".
class RecordedErrors : public ErrorSink {
 public:
    RecordedErrors() { InstallErrorSink(this); }
    ~RecordedErrors() override { InstallErrorSink(nullptr); }
    RecordedErrors(const RecordedErrors&) = delete;
    RecordedErrors& operator=(const RecordedErrors&) = delete;

    void ReportError(TextView procedure, const ErrorRecord& record, bool /*reRaise*/) override {
        lines.push_back(Text(procedure) + ": " + std::to_string(record.Number));
    }

    std::vector<Text> lines;
};

}  // namespace rvl::test
