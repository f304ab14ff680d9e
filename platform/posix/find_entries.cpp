#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/latin1_case.h"
#include "platform/posix/host_path.h"
#include "platform/wildcard.h"

namespace rvl::platform {
namespace {

bool ComesBefore(char one, char other) {
    return static_cast<unsigned char>(LowerLatin1(one)) < static_cast<unsigned char>(LowerLatin1(other));
}

std::uint32_t AttributesOf(const Text& name, const struct stat& status) {
    const bool isFolder = S_ISDIR(status.st_mode);
    std::uint32_t attributes = isFolder ? kAttributeDirectory : kAttributeArchive;
    if ((status.st_mode & 0222) == 0) attributes |= kAttributeReadOnly;
    if (name.size() > 1 && name[0] == '.' && name != "..") attributes |= kAttributeHidden;
    return attributes;
}

/// Creation time is the status-change time: what every file system here keeps and never reads in the future.
std::optional<DirectoryEntry> EntryOf(const std::string& folder, const std::string& hostName) {
    struct stat status {};
    const std::string host = folder + "/" + hostName;
    if (stat(host.c_str(), &status) != 0 && lstat(host.c_str(), &status) != 0) return std::nullopt;
    try {
        const Text name = TextFromUtf8(hostName);
        const std::int64_t size = S_ISDIR(status.st_mode) ? 0 : status.st_size;
        return DirectoryEntry{name,
                              size,
                              AttributesOf(name, status),
                              std::min(status.st_ctim.tv_sec, status.st_mtim.tv_sec),
                              status.st_mtim.tv_sec,
                              status.st_atim.tv_sec};
    } catch (const Error&) {
        return std::nullopt;  // the name is no Text
    }
}

std::vector<DirectoryEntry> MatchFolder(const std::string& folder, TextView pattern) {
    std::vector<DirectoryEntry> entries;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.c_str()), closedir);
    while (const dirent* row = directory ? readdir(directory.get()) : nullptr) {
        std::optional<DirectoryEntry> entry = EntryOf(folder, row->d_name);
        if (entry && MatchesWildcard(entry->name, pattern)) entries.push_back(std::move(*entry));
    }
    std::sort(entries.begin(), entries.end(), [](const DirectoryEntry& a, const DirectoryEntry& b) {
        return std::lexicographical_compare(a.name.begin(), a.name.end(), b.name.begin(), b.name.end(),
                                            ComesBefore);
    });
    return entries;
}

/// A path without wildcards names one entry; with a trailing separator or for a drive's root, none.
std::vector<DirectoryEntry> MatchOne(const Text& path, TextView lastStep) {
    const std::string host = HostPath(path);
    if (host.empty() || lastStep.empty()) return {};
    const std::size_t slash = host.rfind('/');
    std::optional<DirectoryEntry> entry = EntryOf(host.substr(0, slash), host.substr(slash + 1));
    if (!entry) return {};
    return {std::move(*entry)};
}

}  // namespace

bool HasEntries(const Text& folder) {
    const std::string host = HostPath(folder);
    std::error_code unreadable;
    return !host.empty() &&
           std::filesystem::directory_iterator(host, unreadable) != std::filesystem::directory_iterator();
}

/// A subfolder that cannot be read may hold files: it counts as if it did. A folder that cannot even be
/// looked into is none.
bool HasFilesBelow(const Text& folder) {
    const std::string host = HostPath(folder);
    std::error_code problem;
    std::filesystem::recursive_directory_iterator entry(host, problem), end;
    if (problem) return false;
    for (; entry != end; entry.increment(problem)) {
        const auto type = entry->symlink_status(problem).type();
        if (problem || type != std::filesystem::file_type::directory) return true;
    }
    return static_cast<bool>(problem);
}

std::vector<DirectoryEntry> FindEntries(const Text& pattern) {
    const std::size_t separator = pattern.find_last_of("\\/:");
    const std::size_t begin = separator == Text::npos ? 0 : separator + 1;
    TextView lastStep = TextView(pattern).substr(begin);
    if (lastStep.find_first_of("*?") == TextView::npos) return MatchOne(pattern, lastStep);
    if (lastStep == "*.*") lastStep = "*";  // every name, with or without a dot
    const std::string folder = HostPath(begin == 0 ? Text(".") : pattern.substr(0, begin));
    return folder.empty() ? std::vector<DirectoryEntry>{} : MatchFolder(folder, lastStep);
}

}  // namespace rvl::platform
