#include "session/access_installations.h"

#include "platform/access_database.h"
#include "runtime/folder_paths.h"
#include "runtime/folders.h"
#include "runtime/registry_value.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using platform::RegistryRoot;

constexpr const char* kProgram = "MSACCESS.EXE";
constexpr std::int32_t kHighestVersion = 11;

Text RegistryText(RegistryRoot root, const Text& key, const Text& name = "") {
    cRegistry registry;
    registry.ClassKey = root;
    registry.SectionKey = key;
    registry.ValueKey = name;
    return registry.TextValue();
}

/// Below the key of all programs. A 64-bit system keeps apart what 32-bit programs store there.
Text SoftwareText(const Text& key, const Text& name = "") {
    for (const char* all : {"SOFTWARE\\", "SOFTWARE\\Wow6432Node\\"})
        if (Text text = RegistryText(RegistryRoot::LocalMachine, all + key, name); !text.empty()) return text;
    return "";
}

/// The quoted program at the head of the command that opens a database.
Text FromOpenCommand(const Text& version) {
    const Text command =
        RegistryText(RegistryRoot::ClassesRoot, "Access.Application." + version + "\\shell\\open\\command");
    if (command.empty() || command[0] != '"') return "";
    return command.substr(1, command.find('"', 1) - 1);
}

Text FromInstallRoot(const Text& version) {
    const Text folder = SoftwareText("Microsoft\\Office\\" + version + ".0\\Common\\InstallRoot", "Path");
    return folder.empty() ? Text() : WithTrailingBackslash(folder) + kProgram;
}

Text FromClassId(const Text& version) {
    const Text classId = SoftwareText("Classes\\Access.Application." + version + "\\CLSID");
    return classId.empty() ? "" : SoftwareText("Classes\\CLSID\\" + classId + "\\LocalServer32");
}

Text BelowProgramFiles(const Text& programFiles, const Text& version) {
    return programFiles + "Microsoft Office\\Office" + version + "\\" + kProgram;
}

Text FromProgramFiles(const Text& version) {
    return BelowProgramFiles(ProgramFilesPath(), version);
}

Text FromProgramFilesX86(const Text& version) {
    const Text folder = ProgramFilesX86Path();
    return folder.empty() ? "" : BelowProgramFiles(folder, version);
}

}  // namespace

Text FindAccessLocation(std::int32_t version) try {
    const Text number = NumberText(version);
    for (const auto source :
         {FromOpenCommand, FromInstallRoot, FromClassId, FromProgramFiles, FromProgramFilesX86}) {
        Text path = source(number);
        if (!path.empty() && FileExists(path)) return path;
    }
    return "";
} catch (...) {
    HandleError("MDBTools.FindAccessLocation");
    return "";
}

LongVector InstalledAccessVersions() try {
    LongVector known, installed;
    known.FromString("2,7,8,9,10,11", ",");
    for (int index = 0; index < known.Count(); ++index)
        if (!FindAccessLocation(known.Item(index)).empty()) installed.Add(known.Item(index), true);
    return installed;
} catch (...) {
    HandleError("MDBTools.InstalledAccessVersions");
    return {};
}

Text GetClosestAccessVersion(std::int32_t version) try {
    for (; version <= kHighestVersion; ++version) {
        Text path = FindAccessLocation(version);
        if (!path.empty()) return path;
    }
    return "";
} catch (...) {
    HandleError("MDBTools.GetClosestAccessVersion");
    return "";
}

std::int32_t AccessVersionOfFormat(const Text& format) {
    constexpr std::pair<TextView, std::int32_t> kVersions[] = {
        {"02", 2}, {"06", 7}, {"07", 8}, {"08", 9}, {"09", 10}};
    for (const auto& [beginning, version] : kVersions)
        if (format.starts_with(beginning)) return version;
    return 0;
}

Text GetBestAccessPath(const Text& databasePath, const LongVector& allowed, LongVector installed) try {
    installed.Sort();
    for (int index = allowed.Count() - 1; index >= 0; --index) {
        const std::int32_t version = allowed.Item(index);
        Text path = installed.Contains(version) ? FindAccessLocation(version) : Text();
        if (!path.empty()) return path;
    }
    if (allowed.Count() > 0 || installed.Count() == 0) return "";
    const std::int32_t version = AccessVersionOfFormat(platform::DatabaseAccessVersion(databasePath));
    return version == 0 ? FindAccessLocation(installed.Item(installed.Count() - 1))
                        : GetClosestAccessVersion(version);
} catch (...) {
    HandleErrorAndReRaise("Globals.GetBestAccessPath");
}

}  // namespace rvl
