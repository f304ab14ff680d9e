#include "app/start_up.h"
#include "deploy/explain_database_error.h"
#include "platform/event_loop.h"
#include "platform/process.h"
#include "runtime/error_reporter.h"

int main(int argc, char** argv) {
    rvl::ErrorReporter reporter;
    reporter.SetExplainer(rvl::ExplainDatabaseError);
    rvl::InstallErrorSink(&reporter);
    rvl::platform::SetEventErrorHandler([] { rvl::HandleError("EventLoop"); });
    rvl::platform::SetCommandLine(argc, argv);
    return rvl::Main();
}
