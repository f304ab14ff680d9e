#include "runtime/tools_library.h"

#include <vector>

#include "platform/dynamic_library.h"
#include "platform/special_folders.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

Text ToolsFileName() {
    return platform::LibraryFileName("RavelinTools");
}

bool CreateTools(Text& problem) {
    State().Tools = platform::DynamicLibrary::Load(AppPath() + ToolsFileName(), problem);
    return State().Tools != nullptr;
}

/// Everything else that the program needs is linked into it or part of the system.
std::vector<Text> RegSvrFiles() {
    return {ToolsFileName()};
}

bool RegisterComponent(const Text& path) {
    Text problem;
    const auto library = platform::DynamicLibrary::Load(path, problem);
    void* symbol = library ? library->Symbol("DllRegisterServer") : nullptr;
    return symbol != nullptr && reinterpret_cast<int (*)()>(symbol)() >= 0;
}

void Register(const Text& file) {
    for (const Text& folder : {AppPath(), platform::SpecialFolderPath(platform::SpecialFolder::System)}) {
        const Text path = folder + file;
        if (!FileExists(path)) continue;
        Log("Registering " + path);
        if (!RegisterComponent(path)) Log("Error registering " + file);
        return;
    }
    Log("Warning: " + file + " does not exist");
}

}  // namespace

void RegisterDependancies() try {
    Log("Registering dependancies");
    for (const Text& file : RegSvrFiles())
        Register(file);
} catch (...) {
    HandleError("Globals.RegisterDependancies");
}

void LoadTools() try {
    Text problem;
    if (CreateTools(problem)) return;
    Log("Tools does not appear to be registered correctly, registering dependancies");
    RegisterDependancies();
    if (!CreateTools(problem)) Log("Unable to load tools: " + problem);
} catch (...) {  // the process goes on without its tools
    Log("Unable to load tools: " + CurrentError().Description);
}

}  // namespace rvl
