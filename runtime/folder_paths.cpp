#include "runtime/folder_paths.h"

#include "platform/special_folders.h"
#include "runtime/folders.h"
#include "runtime/registry_value.h"
#include "runtime/system_information.h"
#include "util/path_text.h"

namespace rvl {
namespace {

using platform::RegistryRoot;
using platform::SpecialFolder;

/// A source that fails is a source without a folder.
Text GetSpecialFolder(SpecialFolder folder) {
    try {
        const Text path = platform::SpecialFolderPath(folder);
        return path.empty() ? path : WithTrailingBackslash(path);
    } catch (...) {
        return "";
    }
}

Text RegistryFolder(RegistryRoot root, const Text& key, const Text& name) {
    try {
        cRegistry registry;
        registry.ClassKey = root;
        registry.SectionKey = key;
        registry.ValueKey = name;
        return registry.TextValue();
    } catch (...) {
        return "";
    }
}

}  // namespace

Text AllUsersPath() {
    if (Text path = BackOneDir(GetSpecialFolder(SpecialFolder::CommonAppData)); !path.empty()) return path;
    if (Text path = BackOneDir(GetSpecialFolder(SpecialFolder::CommonDesktop)); !path.empty()) return path;
    const Text windows = GetSpecialFolder(SpecialFolder::Windows);
    if (IsWinNT()) return windows + "Profiles\\All Users\\";
    const Text desktop = RegistryFolder(
        RegistryRoot::LocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Folders",
        "Common Desktop");
    return desktop.empty() ? windows + "All Users\\" : BackOneDir(desktop);
}

Text CommonAppDataPath() {
    if (Text path = GetSpecialFolder(SpecialFolder::CommonAppData); !path.empty()) return path;
    if (!IsWinNT()) {
        const Text path = RegistryFolder(
            RegistryRoot::Users,
            ".DEFAULT\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders", "AppData");
        if (!path.empty()) return WithTrailingBackslash(path);
    }
    return AllUsersPath() + "Application Data\\";
}

Text UserLocalSettingsAppDataPath() {
    if (Text path = GetSpecialFolder(SpecialFolder::LocalAppData); !path.empty()) return path;
    if (Text path = GetSpecialFolder(SpecialFolder::RoamingAppData); !path.empty()) return path;
    return CommonAppDataPath();
}

Text ProgramFilesPath() {
    Text path = GetSpecialFolder(SpecialFolder::ProgramFiles);
    if (path.empty())
        path = RegistryFolder(RegistryRoot::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion",
                              "ProgramFilesDir");
    return DirExists(path) ? WithTrailingBackslash(path) : path;
}

Text ProgramFilesX86Path() {
    return GetSpecialFolder(SpecialFolder::ProgramFilesX86);
}

Text DesktopPath() {
    return GetSpecialFolder(SpecialFolder::Desktop);
}

Text StartMenuProgramsPath() {
    return GetSpecialFolder(SpecialFolder::StartMenuPrograms);
}

}  // namespace rvl
