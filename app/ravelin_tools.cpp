// The product's tools library: loaded at start, registered like every component the program depends on.

#include "platform/running_access.h"
#include "runtime/tools_interface.h"

extern "C" {

int DllRegisterServer() {
    return 0;
}

int DllUnregisterServer() {
    return 0;
}

int TellRunningAccess(std::uint32_t accessWindow, rvl::TakeAccessValue take, void* taker) try {
    const auto access = rvl::platform::FindRunningAccess(accessWindow);
    if (!access) return 0;
    take(taker, rvl::kAccessVersion, access->version.c_str());
    take(taker, rvl::kAccessBuild, access->build.c_str());
    if (access->currentProject) take(taker, rvl::kAccessCurrentProject, access->currentProject->c_str());
    return 1;
} catch (...) {  // nothing may leave a C function
    return 0;
}
}
