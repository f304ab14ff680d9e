#include "platform/full_path.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "platform/error.h"
#include "platform/posix/host_path.h"

namespace rvl::platform {
namespace {

constexpr int kPathNotFound = 3;
constexpr int kInvalidName = 123;
constexpr int kNameTooLong = 206;

/// The steps of a path, each after a separator; ".." does not climb above the first.
Text PlainSteps(TextView path, char separator) {
    std::vector<TextView> steps;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find_first_of("\\/", start), path.size());
        const TextView step = path.substr(start, end - start);
        start = end + 1;
        if (step == "..") {
            if (!steps.empty()) steps.pop_back();
        } else if (!step.empty() && step != ".") {
            steps.push_back(step);
        }
    }
    Text plain;
    for (const TextView step : steps)
        plain.append(1, separator).append(step);
    const bool closed = !path.empty() && (path.back() == '\\' || path.back() == '/');
    return closed ? plain + separator : plain;
}

/// Length of "\\server\share", which ".." does not climb above.
std::size_t ShareLength(TextView path) {
    const std::size_t server = std::min(path.find_first_of("\\/", 2), path.size());
    return std::min(path.find_first_of("\\/", server + 1), path.size());
}

Text OnDrive(const Text& drive, TextView steps) {
    const Text plain = PlainSteps(steps, '\\');
    return drive + (plain.empty() ? "\\" : plain);
}

/// A path that the host reads: absolute, or relative to the current folder.
int FromHost(const Text& path, Text& absolute) {
    std::error_code gone;
    const std::string folder = path[0] == '/' ? "" : std::filesystem::current_path(gone).string() + "/";
    if (gone) return kPathNotFound;
    try {
        absolute = WindowsPath(PlainSteps(folder + Utf8FromText(path), '/'));
    } catch (const Error&) {
        return kInvalidName;  // the current folder is no Text
    }
    if (absolute.size() == 2) absolute += '\\';  // the drive itself
    return 0;
}

int Resolve(const Text& path, Text& absolute) {
    if (path.empty() || path.find('\0') != Text::npos) return kInvalidName;
    if (path.size() >= 2 && path[1] == ':') {
        absolute = OnDrive(path.substr(0, 2), TextView(path).substr(2));
    } else if (path.starts_with("\\\\")) {
        const std::size_t share = ShareLength(path);
        absolute = path.substr(0, share) + PlainSteps(TextView(path).substr(share), '\\');
    } else if (path[0] == '\\') {
        absolute = OnDrive("C:", path);
    } else {
        return FromHost(path, absolute);
    }
    return 0;
}

}  // namespace

int FullPath(const Text& path, Text& absolute) {
    Text resolved;
    if (const int code = Resolve(path, resolved); code != 0) return code;
    if (resolved.size() >= kPathBuffer) return kNameTooLong;
    absolute = std::move(resolved);
    return 0;
}

}  // namespace rvl::platform
