#include "platform/shell_link.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/full_path.h"
#include "platform/link_file.h"
#include "platform/posix/link_format.h"

namespace rvl::platform {
namespace {

constexpr int kFileNotFound = 2;

}  // namespace

int WriteShellLink(const Text& path, const ShellLink& link) {
    ShellLink absolute = link;
    absolute.target.resize(std::min(link.target.size(), link.target.find('\0')));
    if (!absolute.target.empty())
        if (const int code = FullPath(absolute.target, absolute.target); code != 0) return code;
    std::string bytes;
    const int code = FormatLink(absolute, bytes);
    return code != 0 ? code : ReplaceLinkFile(path, bytes);
}

int ReadShellLink(const Text& path, ShellLink& link) {
    std::string bytes;
    const int code = ReadLinkFile(path, bytes);
    return code != 0 ? code : ParseLink(bytes, link);
}

int ResolveShellLink(const Text& path, std::uint32_t, std::intptr_t, int, ShellLink& link) {
    if (const int code = ReadShellLink(path, link); code != 0) return code;
    return FileExists(link.target) || DirectoryExists(link.target) ? 0 : kFileNotFound;
}

}  // namespace rvl::platform
