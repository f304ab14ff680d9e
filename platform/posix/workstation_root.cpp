#include "platform/posix/workstation_root.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace rvl::platform {
namespace {

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string DefaultRoot() {
    if (geteuid() == 0) return "/var/lib/rvlclient";
    if (const std::string data = Environment("XDG_DATA_HOME"); !data.empty()) return data + "/rvlclient";
    return Environment("HOME") + "/.local/share/rvlclient";
}

std::string ChosenRoot() {
    const std::string root = Environment("RVL_ROOT");
    return root.empty() ? DefaultRoot() : root;
}

std::string CreateRoot(const std::string& chosen) {
    std::error_code ignored;
    std::filesystem::path root = std::filesystem::absolute(chosen, ignored).lexically_normal();
    std::filesystem::create_directories(root / "drive_c", ignored);
    std::string text = root.string();
    while (text.size() > 1 && text.back() == '/')
        text.pop_back();
    return text;
}

}  // namespace

const std::string& WorkstationRoot() {
    static const std::string root = CreateRoot(ChosenRoot());
    return root;
}

const std::string& UsersOwnRoot() {
    static const std::string root = CreateRoot(DefaultRoot());
    return root;
}

}  // namespace rvl::platform
