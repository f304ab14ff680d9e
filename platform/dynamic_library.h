#pragma once

#include <memory>

#include "platform/text.h"

namespace rvl::platform {

/// A library loaded at run time; unloads itself.
class DynamicLibrary {
 public:
    /// Null when it cannot be loaded; `problem` is then the system's description.
    static std::unique_ptr<DynamicLibrary> Load(const Text& path, Text& problem);

    ~DynamicLibrary();
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    void* Symbol(const char* name) const;  ///< null when it does not export it

 private:
    explicit DynamicLibrary(void* handle) : m_handle(handle) {}
    void* m_handle;
};

/// File name of the library that carries `name` on this system ("RavelinTools" -> "RavelinTools.dll").
Text LibraryFileName(const Text& name);

}  // namespace rvl::platform
