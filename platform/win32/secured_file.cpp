#include "platform/win32/secured_file.h"

#include <aclapi.h>

#include "platform/file_security.h"
#include "platform/win32/long_path.h"
#include "platform/win32/security_descriptor.h"

namespace rvl::platform {
namespace {

/// With these an item can be opened for this although nobody has rights to it. They count for files that are
/// opened so, and the process keeps them.
void EnableBackupPrivileges() {
    static const bool enabled =
        EnableProcessPrivilege("SeBackupPrivilege") && EnableProcessPrivilege("SeRestorePrivilege");
    static_cast<void>(enabled);
}

bool KeepsAccessLists(HANDLE file) {
    DWORD features = 0;
    const BOOL known =
        GetVolumeInformationByHandleW(file, nullptr, 0, nullptr, nullptr, &features, nullptr, 0);
    return !known || (features & FILE_PERSISTENT_ACLS) != 0;
}

bool IsOwnAccount(PSID sid) {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return false;
    const UniqueHandle owned(token);
    alignas(TOKEN_USER) BYTE buffer[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    return GetTokenInformation(token, TokenUser, buffer, sizeof buffer, &size) &&
           EqualSid(sid, reinterpret_cast<const TOKEN_USER*>(buffer)->User.Sid);
}

bool IsOfTrustedAccount(HANDLE link) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(link, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr, nullptr,
                        &descriptor) != ERROR_SUCCESS)
        return false;
    const UniqueSecurityDescriptor owned(descriptor);
    return IsWellKnownSid(owner, WinLocalSystemSid) || IsWellKnownSid(owner, WinBuiltinAdministratorsSid) ||
           IsOwnAccount(owner);
}

/// Of a file with a tag, which not every file system can be asked for.
bool LeadsElsewhere(HANDLE file) {
    FILE_ATTRIBUTE_TAG_INFO info{};
    return GetFileInformationByHandleEx(file, FileAttributeTagInfo, &info, sizeof info) &&
           IsReparseTagNameSurrogate(info.ReparseTag);
}

}  // namespace

int SecuredFile::Open(const Text& path, DWORD access) {
    EnableBackupPrivileges();
    bool isLink = false;
    if (const int code = OpenStep(path, access, FILE_FLAG_OPEN_REPARSE_POINT, isLink); code != 0) return code;
    if (isLink) {
        if (!IsOfTrustedAccount(Handle())) return ERROR_ACCESS_DENIED;
        if (const int code = OpenStep(path, access, 0, isLink); code != 0) return code;
    }
    return KeepsAccessLists(Handle()) ? 0 : ERROR_NOT_SUPPORTED;
}

int SecuredFile::OpenStep(const Text& path, DWORD access, DWORD flags, bool& isLink) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    if (path.find('\0') != Text::npos) return ERROR_PATH_NOT_FOUND;
    m_handle =
        OwnHandle(CreateFileW(LongPath(path).c_str(), access | READ_CONTROL | FILE_READ_ATTRIBUTES, kShareAll,
                              nullptr, OPEN_EXISTING, flags | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!m_handle) return LastError();
    BY_HANDLE_FILE_INFORMATION info{};
    if (!GetFileInformationByHandle(Handle(), &info)) return LastError();
    m_isFolder = (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    isLink = (info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && LeadsElsewhere(Handle());
    return 0;
}

}  // namespace rvl::platform
