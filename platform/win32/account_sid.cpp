#include "platform/win32/account_sid.h"

#include <string>
#include <utility>

#include "platform/latin1_case.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

bool MayHaveAccess(SID_NAME_USE kind) {
    return kind == SidTypeUser || kind == SidTypeGroup || kind == SidTypeAlias ||
           kind == SidTypeWellKnownGroup || kind == SidTypeComputer;
}

}  // namespace

int AccountSid::Find(const Text& account) {
    if (account.empty() || account.find('\0') != Text::npos) return ERROR_NONE_MAPPED;
    const int code = Look(Wide(account));
    return code == ERROR_NONE_MAPPED && TakeEnglishName(account) ? 0 : code;
}

bool AccountSid::IsEveryone() const {
    return IsWellKnownSid(Get(), WinWorldSid);
}

int AccountSid::Look(const std::wstring& account) {
    DWORD size = SECURITY_MAX_SID_SIZE;
    m_bytes.resize(size);
    std::wstring domain(MAX_PATH, L'\0');
    auto domainSize = static_cast<DWORD>(domain.size());
    SID_NAME_USE kind = SidTypeUnknown;
    if (!LookupAccountNameW(nullptr, account.c_str(), m_bytes.data(), &size, domain.data(), &domainSize,
                            &kind))
        return LastError();
    return MayHaveAccess(kind) ? 0 : ERROR_NONE_MAPPED;
}

/// What stands for the built-in accounts where their names in the system's language cannot become a Text.
bool AccountSid::TakeEnglishName(const Text& account) {
    static constexpr std::pair<const char*, WELL_KNOWN_SID_TYPE> kNames[] = {
        {"administrators", WinBuiltinAdministratorsSid},
        {"everyone", WinWorldSid},
        {"system", WinLocalSystemSid}};
    for (const auto& [name, type] : kNames) {
        DWORD size = SECURITY_MAX_SID_SIZE;
        m_bytes.resize(size);
        if (LowerLatin1(account) == name) return CreateWellKnownSid(type, nullptr, m_bytes.data(), &size);
    }
    return false;
}

}  // namespace rvl::platform
