#include "deploy/access_commands.h"

#include <optional>

#include "deploy/ntfs_permissions.h"
#include "runtime/log_file.h"
#include "util/error_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

struct InternalAccount {
    const char* name;
    Text (*localName)();
    const char* logText;
};

constexpr InternalAccount kInternalAccounts[] = {
    {"Administrators", AdministratorsGroupName, "Administrators group is "},
    {"Everyone", EveryoneGroupName, "Everyone group is "},
    {"System", LocalSystemUsername, "Local System users is "},
};

enum class Logging { Off, On };

/// The local name of an internal account, any other account unchanged; nothing for an unknown internal name.
std::optional<Text> LocalAccount(const Text& account, Logging logging) {
    constexpr TextView kPrefix = "RVL-INTERNAL\\";
    if (!account.starts_with(kPrefix)) return account;
    for (const InternalAccount& internal : kInternalAccounts) {
        if (!EqualsNoCase(TextView(account).substr(kPrefix.size()), internal.name)) continue;
        Text name = internal.localName();
        if (logging == Logging::On) Log(internal.logText + name);
        return name;
    }
    return std::nullopt;
}

void RefuseInternalName(const ServerRequest& request, const Text& account) {
    constexpr std::int32_t kInvalidParameter = 87;
    request.Fail(kInvalidParameter, "Invalid parameter, unrecognised internal name: " + account);
}

void AnswerResult(const ServerRequest& request, int code) {
    code == 0 ? request.Succeed() : request.Fail(code, GetErrorString(code));
}

}  // namespace

void RemoveAllAccessCommand(const ServerRequest& request) {
    const Text& path = request.Parameters()[0];
    const std::int32_t flag = ParseLongOr(request.Parameters()[1], -1);
    if (path.empty() || flag < 0) return request.RefuseAsInvalid();
    AnswerResult(request, RemoveAllPermissions(path, flag != 0));
}

void AddAccessCommand(const ServerRequest& request) {
    const Text &path = request.Parameters()[0], &account = request.Parameters()[1];
    const std::int32_t mask = ParseLongOr(request.Parameters()[2], -1);
    if (path.empty() || account.empty() || mask <= 0) return request.RefuseAsInvalid();
    const auto local = LocalAccount(account, Logging::Off);
    if (!local) return RefuseInternalName(request, account);
    AnswerResult(request, AddPermission(path, *local, mask));
}

void SetOwnerCommand(const ServerRequest& request) {
    const Text &path = request.Parameters()[0], &account = request.Parameters()[1];
    if (path.empty() || account.empty()) return request.RefuseAsInvalid();
    const auto local = LocalAccount(account, Logging::On);
    if (!local) return RefuseInternalName(request, account);
    AnswerResult(request, SetOwner(path, *local));
}

}  // namespace rvl
