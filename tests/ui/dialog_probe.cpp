// Reports one error in a process with windows, for the test that looks at the dialog and presses its buttons.

#include "runtime/error_reporter.h"
#include "runtime/terminate.h"
#include "ui/window_dialogs.h"

int main() {
    rvl::ErrorReporter reporter;
    rvl::WindowDialogs dialogs;
    rvl::InstallErrorSink(&reporter);
    rvl::InstallDialogs(&dialogs);
    const rvl::Text longText =
        "The database engine cannot open the file. It is already opened exclusively by another user, or you "
        "need permission to view its data.";
    reporter.ReportError("frmClientMain.Form_Load", {3051, "Database", longText, {}, 0, 120}, false);
    return rvl::kExitNormal;
}
