#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// Access rights and owners of files and folders. Accounts are names as the system's lookup takes them, a
/// user as DOMAIN\user, a group by name. Results are Win32 error codes, 0 for success: 2 and 3 not found, 5
/// access denied, 50 the file system keeps no access lists, 1307 may not be assigned as owner, 1332 no such
/// account.

/// Grants a Windows access mask to the account, in addition to what it has. A folder hands the grant on to
/// what is created in it from then on.
int AddAccess(const Text& path, const Text& account, std::uint32_t mask);

/// Removes every entry that was set on the path itself and whatever a folder hands on; the owner keeps its
/// own rights. `protect` keeps away what the folder above would hand down.
int RemoveAllAccess(const Text& path, bool protect);

/// RemoveAllAccess and then AddAccess for each account, in one step. An account that does not exist is left
/// out.
int ReplaceAccess(const Text& path, const std::vector<Text>& accounts, std::uint32_t mask);

/// What was granted to an account stays granted, whoever becomes the owner.
int SetFileOwner(const Text& path, const Text& account);

struct AccountName {
    Text domain;  ///< may be empty
    Text name;    ///< in the system's language
};

enum class SidLookup {
    Found,
    NotBuilt,  ///< the numbers make no security identifier
    Unknown,   ///< no account of this system has it
};

/// The account of a well-known security identifier: {5, {32, 544}} is the Administrators group.
SidLookup LookupWellKnownAccount(std::uint8_t authority, const std::vector<std::uint32_t>& subAuthorities,
                                 AccountName& account);

/// Enables a privilege such as "SeTakeOwnershipPrivilege" for this process; false when it does not hold it.
bool EnableProcessPrivilege(const Text& name);

}  // namespace rvl::platform
