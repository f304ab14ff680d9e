#pragma once

#include <windows.h>

#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// A security identifier: of an account, or a well-known one.
class AccountSid {
 public:
    /// 0, or a Win32 error code: 1332 when there is no such account. A domain is none.
    int Find(const Text& account);

    bool IsEveryone() const;
    PSID Get() const { return const_cast<BYTE*>(m_bytes.data()); }  // the system's calls do not change it

 private:
    int Look(const std::wstring& account);
    bool TakeEnglishName(const Text& account);

    std::vector<BYTE> m_bytes;
};

}  // namespace rvl::platform
