#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl {

// The module NTFSPermissions. Its operations return a Win32 error code, 0 for success; without NTFS security
// (no Windows of the NT family) that is 50 and nothing is done. The platform's file security keeps nothing
// from one operation to the next, so there is no component to create first.

/// The access masks that the system grants.
inline constexpr std::int32_t kFullAccess = 0x1F01FF;
inline constexpr std::int32_t kReadAndExecute = 0x1200A9;

/// Removes every entry set on the path itself; the flag is the platform's `protect`.
int RemoveAllPermissions(const Text& path, bool flag);
/// Grants a Windows access mask.
int AddPermission(const Text& path, const Text& account, std::int32_t mask);
/// Both for several accounts at once; one that does not exist is left out.
int ReplacePermissions(const Text& path, const std::vector<Text>& accounts, std::int32_t mask);
int SetOwner(const Text& path, const Text& account);

/// "DOMAIN\name", or the name alone, of the well-known account of an authority and one or two
/// sub-authorities. Empty, and logged, when this system has none.
Text GetBuiltInName(std::uint8_t subAuthorityCount, std::uint8_t authority, std::uint32_t firstSubAuthority,
                    std::uint32_t secondSubAuthority);

// Built-in accounts in the system's language, without domain; the English name when the system tells none.
Text AdministratorsGroupName();
Text EveryoneGroupName();
Text LocalSystemUsername();

/// The module PrivilegesModule: enables a privilege of this process. Runtime errors are raised only if asked
/// for.
bool EnablePrivilege(const Text& name, bool raiseErrors);

}  // namespace rvl
