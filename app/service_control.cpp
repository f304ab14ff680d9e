#include "app/service_control.h"

#include "platform/service_process.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "util/command_words.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {

Text ServicePath() try { return platform::RegisteredServiceCommandLine(kServiceName); } catch (...) {
    HandleError("ServiceControl.ServicePath");
    return "";
}

Text ServiceCommandLine() {
    const Text& target = State().UpdateTargetPath;
    return "\"" + (target.empty() ? Self() : target) + "\" -service_mode";
}

void ServiceInstalledCheck() {
    const Text installed = ServicePath();
    if (installed.empty()) return Log("Warning: Service is not installed");
    const Text theirs = FirstWord(installed), ours = FirstWord(ServiceCommandLine());
    if (!EqualsNoCase(theirs, ours))
        Log("Warning: Service is installed to \"" + theirs + "\" not \"" + ours + "\"");
}

}  // namespace rvl
