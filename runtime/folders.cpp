#include "runtime/folders.h"

#include <algorithm>

#include "platform/files.h"
#include "runtime/file.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

bool IsSeparator(char character) {
    return character == '\\' || character == '/';
}

/// Where the first level that may be created begins: behind "C:\" and behind "\\server\".
std::size_t FirstLevel(const Text& path) {
    if (path.size() >= 2 && path[1] == ':') return std::min<std::size_t>(3, path.size());
    if (path.substr(0, 2) != "\\\\") return IsSeparator(path[0]) ? 1 : 0;
    const std::size_t server = path.find('\\', 2);
    return server == Text::npos ? path.size() : server + 1;
}

void CreateLevel(const Text& level) {
    constexpr int kAlreadyExists = 183;
    if (platform::DirectoryExists(level)) return;
    const int code = platform::MakeDirectory(level);
    if (code == 0 || (code == kAlreadyExists && platform::DirectoryExists(level))) return;
    throw Error(code, "Util.CreateLongDirectory", GetErrorString(code) + " (\"" + level + "\")");
}

void CreateLevels(const Text& path) {
    constexpr int kPathNotFound = 3;
    if (path.empty()) throw Error(kPathNotFound, "Util.CreateLongDirectory", GetErrorString(kPathNotFound));
    for (std::size_t end = FirstLevel(path); end < path.size();) {
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        CreateLevel(path.substr(0, end));
        while (end < path.size() && IsSeparator(path[end]))
            ++end;
    }
    if (!platform::DirectoryExists(path))
        throw Error(kPathNotFound, "Util.CreateLongDirectory", GetErrorString(kPathNotFound));
}

void PruneSubfolders(const Text& folder) {
    for (const platform::DirectoryEntry& entry : platform::FindEntries(WithTrailingBackslash(folder) + "*")) {
        const bool isSubfolder = (entry.attributes & platform::kAttributeDirectory) != 0;
        if (!isSubfolder || entry.name == "." || entry.name == "..") continue;
        const Text subfolder = WithTrailingBackslash(folder) + entry.name;
        PruneSubfolders(subfolder);
        platform::RemoveDirectoryAt(subfolder);  // stays when it is not empty
    }
}

/// Goes up from a folder for as long as the levels can be removed and lie below the limit.
template <typename Remove>
void Climb(const Text& folder, const Text& dontGoAbove, const Remove& remove) {
    const Text limit = WithTrailingBackslash(dontGoAbove);
    Text level = WithTrailingBackslash(folder);
    ErrAssert(EqualsNoCase(TextView(level).substr(0, limit.size()), limit),
              "strDirectory must be inside strDontGoAboveDir");
    while (level.size() > limit.size() && remove(level))
        level = BackOneDir(level);
}

}  // namespace

bool FileExists(const Text& path) {
    return platform::FileExists(path);
}

bool DirExists(const Text& path) {
    return platform::DirectoryExists(path);
}

std::int64_t FileLen(const Text& path) {
    std::int64_t bytes = 0;
    if (platform::FileLength(path, bytes) != 0) RaiseFileNotFound("Util.FileLen");
    return bytes;
}

Text ReadFromFile(const Text& path) try {
    File file;
    file.OpenFile(path, platform::FileAccess::Read, platform::FileShare::ReadWrite,
                  platform::FileDisposition::OpenExisting);
    const std::int64_t length = file.Length();
    return length == 0 ? Text() : file.ReadData(length);
} catch (...) {
    HandleErrorAndReRaise("Util.ReadFromFile");
}

bool CreateLongDirectory(const Text& path, ErrorRecord* problem) {
    try {
        CreateLevels(path);
        return true;
    } catch (...) {
        if (problem != nullptr) *problem = CurrentError();
        return false;
    }
}

bool DoesDirectoryContainFilesOrFolders(const Text& folder, Subfolders subfolders) {
    return subfolders == Subfolders::Count ? platform::HasEntries(folder) : platform::HasFilesBelow(folder);
}

void PruneEmptyDirectories(const Text& folder, const Text& dontGoAbove) {
    Climb(folder, dontGoAbove, [](const Text& level) {
        if (platform::HasFilesBelow(level)) return false;
        PruneSubfolders(level);
        return platform::RemoveDirectoryAt(level) == 0;
    });
}

void RemoveEmptyFolders(const Text& folder, const Text& dontGoAbove) {
    Climb(folder, dontGoAbove, [](const Text& level) { return platform::RemoveDirectoryAt(level) == 0; });
}

}  // namespace rvl
