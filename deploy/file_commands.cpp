#include "deploy/file_commands.h"

#include "platform/files.h"
#include "runtime/file_digest.h"
#include "runtime/folders.h"
#include "util/dates.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

void ReplyWithEntry(const ServerRequest& request, const platform::DirectoryEntry& entry) {
    request.Reply("FILE_INFO", {entry.name, NumberText(entry.size), NumberText(entry.attributes),
                                SQLDate(entry.created), SQLDate(entry.lastWrite), SQLDate(entry.lastAccess)});
}

}  // namespace

void CreateDirectoryCommand(const ServerRequest& request) {
    ErrorRecord problem;
    if (CreateLongDirectory(request.Parameters()[0], &problem))
        request.Succeed();
    else
        request.Fail(problem.Number, problem.Description);
}

void MakeDirectoryCommand(const ServerRequest& request) {
    request.Parameters()[0].empty() ? request.RefuseAsInvalid() : CreateDirectoryCommand(request);
}

void GetFileInfoCommand(const ServerRequest& request) {
    const Text& pattern = request.Parameters()[0];
    const std::int32_t mode = ParseLongOr(request.Parameters()[1], -1);
    if (pattern.empty() || mode < 0) return request.RefuseAsInvalid();
    const auto entries = platform::FindEntries(pattern);
    if (mode == 0)
        return entries.empty() ? request.Reply("FILE_INFO", {}) : ReplyWithEntry(request, entries.front());
    for (const auto& entry : entries)
        ReplyWithEntry(request, entry);
    request.Reply("FILE_INFO_END", {});
}

void GetFileMd5Command(const ServerRequest& request) {
    const Text& path = request.Parameters()[0];
    if (path.empty()) return request.RefuseAsInvalid();
    if (FileExists(path))
        request.Reply("FILE_MD5", {path, MD5SumOfFile(path)});
    else
        request.Reply("FILE_MD5", {path});
}

}  // namespace rvl
