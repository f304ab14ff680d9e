#include "platform/dynamic_library.h"

#include <dlfcn.h>

#include "platform/posix/host_path.h"

namespace rvl::platform {

std::unique_ptr<DynamicLibrary> DynamicLibrary::Load(const Text& path, Text& problem) {
    void* handle = dlopen(HostPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* message = dlerror();
        problem = message != nullptr ? message : "unknown error";
        return nullptr;
    }
    return std::unique_ptr<DynamicLibrary>(new DynamicLibrary(handle));
}

DynamicLibrary::~DynamicLibrary() {
    dlclose(m_handle);
}

void* DynamicLibrary::Symbol(const char* name) const {
    return dlsym(m_handle, name);
}

Text LibraryFileName(const Text& name) {
    return name + ".so";
}

}  // namespace rvl::platform
