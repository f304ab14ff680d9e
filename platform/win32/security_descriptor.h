#pragma once

#include <windows.h>

#include <memory>

#include "platform/win32/account_sid.h"

namespace rvl::platform {

struct FreeLocalMemory {
    void operator()(void* memory) const { LocalFree(memory); }
};
using UniqueSecurityDescriptor = std::unique_ptr<void, FreeLocalMemory>;
using UniqueAccessList = std::unique_ptr<ACL, FreeLocalMemory>;

// Results are 0 or a Win32 error code.

/// The access list of an open object.
struct ObjectAccess {
    UniqueSecurityDescriptor descriptor;
    ACL* entries = nullptr;  ///< of the descriptor; null: everybody may do everything
    bool isProtected = false;

    int Load(HANDLE object);
};

enum class HandOn { Nothing, ToNewEntries };

/// `before`, which may be empty but not null, and the mask for each account in addition.
int GrantAccess(const ACL& before, const std::vector<AccountSid>& accounts, DWORD mask, HandOn handOn,
                UniqueAccessList& after);

/// Those entries that came from the folder above.
int InheritedEntries(const ACL& before, UniqueAccessList& inherited);

/// A list without entries: nobody may do anything.
ACL EmptyAccessList();

/// Writes the list of this object alone: what lies in a folder keeps what it has.
int StoreAccess(HANDLE object, const ACL& entries, bool isProtected);

}  // namespace rvl::platform
