#include <windows.h>

#include <tlhelp32.h>

#include <optional>

#include "platform/files.h"
#include "platform/win32/long_path.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

UniqueHandle OpenFile(const std::wstring& path, DWORD access) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return OwnHandle(CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
}

/// What is the same for a file under all of its names.
struct FileIdentity {
    DWORD volume, high, low;

    bool operator==(const FileIdentity&) const = default;
};

std::optional<FileIdentity> IdentityOf(const std::wstring& path) {
    const UniqueHandle file = OpenFile(path, FILE_READ_ATTRIBUTES);
    BY_HANDLE_FILE_INFORMATION information{};
    if (!file || !GetFileInformationByHandle(file.get(), &information)) return std::nullopt;
    return FileIdentity{information.dwVolumeSerialNumber, information.nFileIndexHigh,
                        information.nFileIndexLow};
}

/// Empty for a process that may not be looked at.
std::wstring ProgramOf(DWORD processId) {
    const UniqueHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    std::wstring path(32768, L'\0');
    auto size = static_cast<DWORD>(path.size());
    if (!process || !QueryFullProcessImageNameW(process.get(), 0, path.data(), &size)) return {};
    path.resize(size);
    return path;
}

bool HasProcess(const FileIdentity& program) {
    const UniqueHandle snapshot = OwnHandle(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W row{};
    row.dwSize = sizeof row;
    for (BOOL more = snapshot && Process32FirstW(snapshot.get(), &row); more;
         more = Process32NextW(snapshot.get(), &row))
        if (IdentityOf(ProgramOf(row.th32ProcessID)) == program) return true;
    return false;
}

/// Opening asks without changing anything. The system refuses it for a running program, but also for a file
/// that somebody holds or that may not be written.
bool IsWritingRefused(const std::wstring& path) {
    if (OpenFile(path, FILE_WRITE_DATA)) return false;
    const int code = LastError();
    return code == ERROR_SHARING_VIOLATION || code == ERROR_ACCESS_DENIED;
}

}  // namespace

bool IsRunningProgram(const Text& path) {
    const std::wstring program = LongPath(path);
    if (!IsWritingRefused(program)) return false;
    const std::optional<FileIdentity> identity = IdentityOf(program);
    return identity && HasProcess(*identity);
}

}  // namespace rvl::platform
