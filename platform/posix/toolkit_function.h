#pragma once

#include <dlfcn.h>

namespace rvl::platform {

/// A function of the window toolkit, null when this process has not loaded it: this layer does not need it
/// otherwise.
template <class Function>
Function* ToolkitFunction(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace rvl::platform
