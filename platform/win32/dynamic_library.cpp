#include "platform/dynamic_library.h"

#include <windows.h>

#include "platform/full_path.h"
#include "platform/system_message.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

/// What is wrong with a library is told to the caller, not shown to the user.
class NoErrorBoxes {
 public:
    NoErrorBoxes() { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &m_before); }
    ~NoErrorBoxes() { SetThreadErrorMode(m_before, nullptr); }
    NoErrorBoxes(const NoErrorBoxes&) = delete;
    NoErrorBoxes& operator=(const NoErrorBoxes&) = delete;

 private:
    DWORD m_before = 0;
};

/// From this file only, never from another place that is searched for its name.
int LoadAt(const Text& path, HMODULE& library) {
    Text absolute;
    if (const int code = FullPath(path, absolute); code != 0) return code;
    const NoErrorBoxes quiet;
    library = LoadLibraryExW(Wide(absolute).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return library != nullptr ? 0 : LastError();
}

}  // namespace

std::unique_ptr<DynamicLibrary> DynamicLibrary::Load(const Text& path, Text& problem) {
    HMODULE library = nullptr;
    if (const int code = LoadAt(path, library); code != 0) {
        problem = SystemMessage(code);
        if (problem.empty()) problem = "unknown error";
        return nullptr;
    }
    return std::unique_ptr<DynamicLibrary>(new DynamicLibrary(library));
}

DynamicLibrary::~DynamicLibrary() {
    FreeLibrary(static_cast<HMODULE>(m_handle));
}

void* DynamicLibrary::Symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(m_handle), name));
}

Text LibraryFileName(const Text& name) {
    return name + ".dll";
}

}  // namespace rvl::platform
