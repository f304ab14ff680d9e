#include "platform/environment.h"

#include <strings.h>
#include <unistd.h>

#include <string_view>

#include "platform/error.h"

namespace rvl::platform {
namespace {

/// What stands behind "NAME=" in the environment, null when it stands nowhere. The stored texts come from
/// Windows, where "%Path%" and "%PATH%" are the same.
const char* FindValue(const std::string& name) {
    const char* found = nullptr;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view line = *entry;
        const bool sameName = line.size() > name.size() && line[name.size()] == '=' &&
                              strncasecmp(*entry, name.c_str(), name.size()) == 0;
        if (!sameName) continue;
        const char* value = *entry + name.size() + 1;
        if (line.starts_with(name)) return value;
        if (found == nullptr) found = value;
    }
    return found;
}

}  // namespace

std::optional<Text> EnvironmentVariable(TextView name) {
    const char* value = FindValue(Utf8FromText(name));
    if (value == nullptr) return std::nullopt;
    try {
        return TextFromUtf8(value);
    } catch (const Error&) {
        return std::nullopt;
    }
}

}  // namespace rvl::platform
