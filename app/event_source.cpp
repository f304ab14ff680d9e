#include "app/event_source.h"

#include "app/service_control.h"
#include "runtime/registry_value.h"
#include "runtime/system_information.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

constexpr std::uint32_t kErrorsWarningsInformation = 7;

/// The file of the service control component, which holds the texts of its events. Where the component is not
/// registered the name is empty: events then show without a text.
Text MessageFile() {
    cRegistry server;
    server.ClassKey = platform::RegistryRoot::ClassesRoot;
    server.SectionKey = "CLSID\\{E7BC34A3-BA86-11CF-84B1-CBC2DA68BF6C}\\InprocServer32";
    return server.TextValue();
}

}  // namespace

void RegisterEventSource() try {
    if (!IsWinNT()) return;
    cRegistry source;
    source.SectionKey = Text("SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\") + kServiceName;
    source.ValueKey = "EventMessageFile";
    source.SetValue(MessageFile());
    source.ValueKey = "TypesSupported";
    source.ValueType = RegistryType::Number;
    source.SetValue(kErrorsWarningsInformation);
} catch (...) {
    HandleError("ServiceControl.RegisterEventSource");
}

}  // namespace rvl
