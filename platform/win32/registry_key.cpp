#include "platform/win32/registry_key.h"

#include "platform/error.h"
#include "platform/system_message.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

/// Whatever this program is built for, it sees what the system itself sees.
constexpr REGSAM kView = KEY_WOW64_64KEY;

HKEY HandleOf(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return HKEY_CLASSES_ROOT;
        case RegistryRoot::CurrentUser:
            return HKEY_CURRENT_USER;
        case RegistryRoot::LocalMachine:
            return HKEY_LOCAL_MACHINE;
        case RegistryRoot::Users:
            return HKEY_USERS;
    }
    RaiseRegistryError(ERROR_INVALID_HANDLE);
}

}  // namespace

void RaiseRegistryError(LSTATUS code) {
    throw Error(static_cast<int>(code), "Registry", SystemMessage(static_cast<int>(code)));
}

/// A key may go while it is open.
bool IsMissing(LSTATUS code) {
    if (code == ERROR_SUCCESS) return false;
    if (code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_KEY_DELETED)
        return true;
    RaiseRegistryError(code);
}

std::wstring RegistryPath(const Text& key) {
    std::wstring path;
    for (const wchar_t character : RegistryName(key)) {
        const bool superfluous = character == L'\\' && (path.empty() || path.back() == L'\\');
        if (!superfluous) path.push_back(character);
    }
    if (path.ends_with(L'\\')) path.pop_back();
    return path;
}

std::wstring RegistryName(const Text& name) {
    if (name.find('\0') != Text::npos) RaiseRegistryError(ERROR_BAD_PATHNAME);
    return Wide(name);
}

UniqueRegistryKey OpenRegistryKey(RegistryRoot root, const std::wstring& path, REGSAM access) {
    HKEY key = nullptr;
    const LSTATUS code = RegOpenKeyExW(HandleOf(root), path.c_str(), 0, access | kView, &key);
    return UniqueRegistryKey(IsMissing(code) ? nullptr : key);
}

UniqueRegistryKey MakeRegistryKey(RegistryRoot root, const std::wstring& path, REGSAM access) {
    HKEY key = nullptr;
    const LSTATUS code = RegCreateKeyExW(HandleOf(root), path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         access | kView, nullptr, &key, nullptr);
    if (code != ERROR_SUCCESS) RaiseRegistryError(code);
    return UniqueRegistryKey(key);
}

bool DeleteRegistryTree(RegistryRoot root, const std::wstring& path) {
    const UniqueRegistryKey key = OpenRegistryKey(root, path, DELETE | KEY_READ | KEY_SET_VALUE);
    return key && !IsMissing(RegDeleteTreeW(key.get(), nullptr)) &&
           !IsMissing(RegDeleteKeyExW(HandleOf(root), path.c_str(), kView, 0));
}

}  // namespace rvl::platform
