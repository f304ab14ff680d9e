#include "app/update_state.h"

#include "runtime/registry_value.h"
#include "util/handle_error.h"

namespace rvl {

Text GetTempBinaryPath() try {
    cRegistry registry;
    registry.ClassKey = platform::RegistryRoot::LocalMachine;
    registry.SectionKey = "SOFTWARE\\Ravelin\\Client";
    registry.ValueKey = "TempBinaryPath";
    return registry.TextValue();
} catch (...) {
    HandleError("Globals.GetTempBinaryPath");
    return "";
}

}  // namespace rvl
