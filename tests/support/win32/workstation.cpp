#include "tests/support/workstation.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <set>

#include "platform/registry.h"
#include "tests/support/accounts.h"
#include "tests/support/test_program.h"
#include "tests/support/win32/utf16.h"

namespace rvl::test {
namespace {

/// Made by the script that runs the tests, in the prefix that it makes for them.
constexpr const char* kMark = "C:/windows/rvl-test-prefix";

/// What the system itself keeps at the root of the drive.
const std::set<std::wstring> kSystemsOwn = {L"windows", L"Program Files", L"Program Files (x86)",
                                            L"ProgramData", L"users"};

/// Every entry of a folder ("\\\\?\\C:\\", so that paths may be long) but "." and "..".
template <class Action>
void ForEachEntry(const std::wstring& folder, Action action) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((folder + L"*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = entry.cFileName;
        if (name != L"." && name != L"..") action(name, entry.dwFileAttributes);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
}

/// Read-only files as well.
void Remove(const std::wstring& path, DWORD attributes) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        DeleteFileW(path.c_str());
        return;
    }
    ForEachEntry(path + L"\\", [&](const std::wstring& name, DWORD of) { Remove(path + L"\\" + name, of); });
    RemoveDirectoryW(path.c_str());
}

bool IsOurs() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr &&
           std::filesystem::exists(kMark);
}

}  // namespace

const Text kSomebody = "Administrators";
const Text kProgramThatEnds = "C:\\windows\\system32\\hostname.exe",
           kOtherProgramThatEnds = "C:\\windows\\system32\\whoami.exe";

void ClaimWorkstation() {
    if (IsOurs()) {
        SetCurrentDirectoryW(L"C:\\");
        return;
    }
    std::fputs("These tests change the system: they only run in a Wine prefix of their own.\n", stderr);
    std::abort();
}

std::string DriveC() {
    return "C:";
}

void EmptyDriveC() {
    ClaimWorkstation();
    const std::wstring drive = L"\\\\?\\C:\\";
    ForEachEntry(drive, [&](const std::wstring& name, DWORD attributes) {
        if (!kSystemsOwn.contains(name)) Remove(drive + name, attributes);
    });
}

std::filesystem::path HostFile(const Text& path) {
    return Utf16(Utf8FromText(path));
}

int CodeOfNoDrive() {
    const bool found = GetFileAttributesW(L"Q:\\x") != INVALID_FILE_ATTRIBUTES;
    return found ? 0 : static_cast<int>(GetLastError());
}

void SetEnvironment(const char* name, const std::string& value) {
    SetEnvironmentVariableW(Utf16(name).c_str(), Utf16(value).c_str());
}

void UnsetEnvironment(const char* name) {
    SetEnvironmentVariableW(Utf16(name).c_str(), nullptr);
}

WithoutBrowser::WithoutBrowser() {
    for (const char* scheme : {"http", "https"})
        platform::DeleteRegistryKey(platform::RegistryRoot::ClassesRoot, scheme);
}

/// Nothing in this prefix ever needs one.
WithoutBrowser::~WithoutBrowser() = default;

}  // namespace rvl::test
