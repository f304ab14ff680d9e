#include "app/helper_run_entry.h"

#include "app/service_control.h"
#include "runtime/folders.h"
#include "runtime/registry_value.h"
#include "util/command_words.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

constexpr TextView kHelperSwitch = "-service_helper";

cRegistry HelperRunEntry() {
    cRegistry entry;
    entry.SectionKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
    entry.ValueKey = "RVLClientHelper";
    return entry;
}

bool StartsHelper(const Text& commandLine) {
    return commandLine.find(kHelperSwitch) != Text::npos && FileExists(FirstWord(commandLine));
}

}  // namespace

void ServiceControl_ServiceInstalled(bool) try {
    if (!GetServiceInstalled()) return;
    const cRegistry entry = HelperRunEntry();
    if (StartsHelper(entry.TextValue())) return;
    entry.SetValue("\"" + FirstWord(ServiceCommandLine()) + "\" " + Text(kHelperSwitch));
} catch (...) {
    HandleError("ServiceControl.ServiceControl_ServiceInstalled");
}

void ServiceControl_ServiceRemoved(bool) try { HelperRunEntry().DeleteValue(); } catch (...) {
    HandleError("ServiceControl.ServiceControl_ServiceRemoved");
}

}  // namespace rvl
