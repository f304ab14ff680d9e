#include "tools/deployserver/frontend_version.h"

#include <algorithm>
#include <array>

#include "platform/error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

using Files = std::vector<PublishedFile>;

[[noreturn]] void Raise(const Text& description) {
    throw Error(kApplicationErrorBase + 1, "FrontendVersion", description);
}

/// The name of one of the files as the folder spells it.
Text NameIn(const Files& files, Text name, const Text& option) {
    std::replace(name.begin(), name.end(), '/', '\\');
    const auto found = std::find_if(files.begin(), files.end(),
                                    [&](const PublishedFile& file) { return EqualsNoCase(file.name, name); });
    if (found == files.end()) Raise(option + ": the folder holds no file \"" + name + "\"");
    return found->name;
}

bool IsDatabaseAtTopLevel(const Text& name) {
    constexpr std::array<TextView, 3> kEndings{".mdb", ".mde", ".accdb"};
    return name.find('\\') == Text::npos && std::any_of(kEndings.begin(), kEndings.end(), [&](TextView each) {
               return name.size() > each.size() &&
                      EqualsNoCase(TextView(name).substr(name.size() - each.size()), each);
           });
}

Text OnlyDatabaseOf(const Files& files) {
    const auto isDatabase = [](const PublishedFile& file) { return IsDatabaseAtTopLevel(file.name); };
    const auto first = std::find_if(files.begin(), files.end(), isDatabase);
    if (first == files.end())
        Raise("the folder holds no *.mdb, *.mde or *.accdb at its top: name the main file with --main");
    if (std::any_of(first + 1, files.end(), isDatabase))
        Raise("the folder holds several databases at its top: name the main file with --main");
    return first->name;
}

/// A shortcut becomes a file on the workstation: without the characters that no file of Windows can have.
Text ShortcutName(Text name) {
    for (char& character : name)
        if (Text("\\/:*?\"<>|").find(character) != Text::npos) character = '_';
    return name;
}

}  // namespace

FrontendVersion LoadFrontendVersion(const FrontendOptions& options) {
    const VersionOptions& given = options.version;
    FrontendVersion version;
    version.files = ReadPublishedFolder(given.folder);
    if (version.files.empty()) Raise("the folder \"" + given.folder + "\" holds no file");
    version.frontendId = given.frontendId;
    version.versionId = options.versionId.value_or(1);
    version.name = given.name.empty() ? NameOfFolder(given.folder) : given.name;
    if (version.name.empty()) Raise("the folder has no name: give the front end one with --frontend-name");
    version.mainFile = given.mainFile.empty() ? OnlyDatabaseOf(version.files)
                                              : NameIn(version.files, given.mainFile, "--main");
    version.accessVersions = given.accessVersions;
    version.mdwPath = given.mdwPath;
    version.label = given.label.value_or(NumberText(version.versionId));
    if (!given.iconFile.empty()) version.iconFile = NameIn(version.files, given.iconFile, "--icon");
    version.desktopIcon = given.desktopIcon.value_or(ShortcutName(version.name));
    version.menuIcon = given.menuIcon.value_or(ShortcutName(version.name));
    version.destination = given.destination;
    version.customFolder = given.customFolder;
    version.stagingBase = given.staging;
    return version;
}

Text StagingFolder(const FrontendVersion& version, const Text& commonAppData) {
    const Text base = version.stagingBase.empty()
                          ? WithTrailingBackslash(commonAppData) + "Ravelin\\Client\\Staging"
                          : version.stagingBase;
    return WithTrailingBackslash(base) + NumberText(version.frontendId) + "\\" +
           NumberText(version.versionId) + "\\";
}

std::vector<Text> AnnouncementOf(const FrontendVersion& version, const Text& stagingFolder) {
    return {NumberText(version.frontendId),
            NumberText(version.versionId),
            version.name,
            stagingFolder,
            version.mainFile,
            version.accessVersions,
            version.mdwPath,
            version.label,
            version.iconFile,
            version.desktopIcon,
            version.menuIcon,
            version.destination,
            version.customFolder,
            NumberText(version.FileCount())};
}

}  // namespace rvl::deployserver
