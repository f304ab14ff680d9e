#include "platform/posix/host_path.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include "platform/error.h"
#include "platform/latin1_case.h"
#include "platform/posix/workstation_root.h"

namespace rvl::platform {
namespace {

bool IsSeparator(char character) {
    return character == '\\' || character == '/';
}

bool Exists(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

std::string FoldedUtf8(TextView text) {
    return Utf8FromText(LowerLatin1(text));
}

/// True when a host name reads like `folded` without regard to case.
bool MatchesFolded(const char* hostName, const std::string& folded) {
    try {
        return FoldedUtf8(TextFromUtf8(hostName)) == folded;
    } catch (const Error&) {
        return false;  // a name that is no Text matches none
    }
}

/// The existing spelling of `name` in `folder`, or the given one when there is none.
std::string ExistingName(const std::string& folder, TextView name) {
    std::string exact = Utf8FromText(name);
    if (Exists(folder + "/" + exact)) return exact;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.empty() ? "/" : folder.c_str()),
                                                        closedir);
    if (!directory) return exact;
    const std::string folded = FoldedUtf8(name);
    while (const dirent* entry = readdir(directory.get()))
        if (MatchesFolded(entry->d_name, folded)) return entry->d_name;
    return exact;
}

/// Where the steps of a path begin, and how much of it ".." may not climb above.
struct Base {
    std::string folder;
    std::size_t floor;
};

using Spelling = std::string (*)(const std::string& folder, TextView name);

std::string GivenName(const std::string&, TextView name) {
    return Utf8FromText(name);
}

/// Appends the steps of `path` to its base, each as `spelling` writes it.
std::string AppendSteps(const Base& base, TextView path, Spelling spelling) {
    std::string host = base.folder;
    for (std::size_t start = 0; start < path.size();) {
        std::size_t end = start;
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        const TextView step = path.substr(start, end - start);
        start = end + 1;
        if (step.empty() || step == ".") continue;
        if (step == "..")
            host.resize(std::max(base.floor, host.empty() ? 0 : host.rfind('/')));
        else
            host += "/" + spelling(host, step);
    }
    return host;
}

std::string DriveC() {
    return WorkstationRoot() + "/drive_c";
}

bool IsDrive(TextView path, char letter) {
    return path.size() >= 2 && path[1] == ':' && (path[0] | 0x20) == letter;
}

/// The base of a path; none when the path has no host path.
std::optional<Base> FindBase(TextView path) {
    const Base hostRoot{"", 0};
    if (IsDrive(path, 'z') || path[0] == '/') return hostRoot;
    const bool elsewhere = path.size() >= 2 && (path[1] == ':' || path.substr(0, 2) == "\\\\");
    if (IsDrive(path, 'c') || (path[0] == '\\' && !elsewhere)) return Base{DriveC(), DriveC().size()};
    if (elsewhere) return std::nullopt;  // another drive, or a network share: nothing is mounted there
    std::error_code gone;
    const auto current = std::filesystem::current_path(gone);
    return gone ? std::nullopt : std::optional<Base>(Base{current.string(), 0});
}

}  // namespace

std::string HostPath(TextView path) {
    if (path.empty() || path.find('\0') != TextView::npos) return "";
    const std::optional<Base> base = FindBase(path);
    if (!base) return "";
    const std::size_t drive = path.size() >= 2 && path[1] == ':' ? 2 : 0;
    // Most paths are spelled as they exist: one look instead of one per step.
    std::string host = AppendSteps(*base, path.substr(drive), GivenName);
    if (!Exists(host)) host = AppendSteps(*base, path.substr(drive), ExistingName);
    return host.empty() ? "/" : host;
}

Text WindowsPath(std::string_view hostPath) {
    const std::string drive = DriveC();
    const bool below = hostPath.substr(0, drive.size()) == drive &&
                       (hostPath.size() == drive.size() || hostPath[drive.size()] == '/');
    Text path = below ? "C:" + TextFromUtf8(hostPath.substr(drive.size())) : "Z:" + TextFromUtf8(hostPath);
    for (char& character : path)
        if (character == '/') character = '\\';
    return path;
}

}  // namespace rvl::platform
