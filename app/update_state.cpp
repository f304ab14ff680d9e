#include "app/update_state.h"

#include "deploy/ntfs_permissions.h"
#include "runtime/registry_value.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {

namespace {

cRegistry ClientValue(const Text& name, RegistryType type) {
    cRegistry registry;
    registry.ClassKey = platform::RegistryRoot::LocalMachine;
    registry.SectionKey = "SOFTWARE\\Ravelin\\Client";
    registry.ValueKey = name;
    registry.ValueType = type;
    return registry;
}

}  // namespace

bool IsUpdating() try {
    return ParseLongOr(ClientValue("Updating", RegistryType::Number).TextValue(), 0) != 0;
} catch (...) {
    HandleError("Globals.IsUpdating");
    return false;
}

void SetUpdating(bool updating) try {
    const cRegistry value = ClientValue("Updating", RegistryType::Number);
    if (updating)
        value.SetValue(std::uint32_t{1});
    else
        value.DeleteValue();
} catch (...) {
    HandleError("Globals.SetUpdating");
}

void SetExecutablePermissions(const Text& path) {
    const Text administrators = AdministratorsGroupName();
    const Text system = LocalSystemUsername();
    SetOwner(path, system);
    AddPermission(path, administrators, kFullAccess);
    AddPermission(path, system, kFullAccess);
    AddPermission(path, EveryoneGroupName(), kReadAndExecute);
}

Text GetTempBinaryPath() try {
    return ClientValue("TempBinaryPath", RegistryType::String).TextValue();
} catch (...) {
    HandleError("Globals.GetTempBinaryPath");
    return "";
}

void SetTempBinaryPath(const Text& path) try {
    const cRegistry value = ClientValue("TempBinaryPath", RegistryType::String);
    if (path.empty())
        value.DeleteValue();
    else
        value.SetValue(path);
} catch (...) {
    HandleError("Globals.SetTempBinaryPath");
}

}  // namespace rvl
