#include "app/update_state.h"

#include "platform/registry.h"
#include "util/handle_error.h"

namespace rvl {

Text GetTempBinaryPath() try {
    const auto value = platform::ReadRegistry(platform::RegistryRoot::LocalMachine,
                                              "SOFTWARE\\Ravelin\\Client", "TempBinaryPath");
    const Text* path = value ? std::get_if<Text>(&*value) : nullptr;
    return path != nullptr ? *path : Text();
} catch (...) {
    HandleError("Globals.GetTempBinaryPath");
    return "";
}

}  // namespace rvl
