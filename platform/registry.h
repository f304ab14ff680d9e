#pragma once

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

#include "platform/text.h"

namespace rvl::platform {

enum class RegistryRoot : std::uint32_t {
    ClassesRoot = 0x80000000,
    CurrentUser = 0x80000001,
    LocalMachine = 0x80000002,
    Users = 0x80000003,
};

/// A text in which %NAME% stands for an environment variable; kept and given as it was written.
struct ExpandableText {
    Text text;
    bool operator==(const ExpandableText&) const = default;
};

/// REG_SZ (1), REG_DWORD (4) or REG_EXPAND_SZ (2).
using RegistryValue = std::variant<Text, std::uint32_t, ExpandableText>;

/// Keys and value names compare without regard to case; the default value of a key has the empty name.
/// Failures raise an Error whose number is the Win32 code.

std::optional<RegistryValue> ReadRegistry(RegistryRoot root, const Text& key, const Text& name);
void WriteRegistry(RegistryRoot root, const Text& key, const Text& name, const RegistryValue& value);
bool DeleteRegistryValue(RegistryRoot root, const Text& key, const Text& name);  ///< false: it was not there

bool RegistryKeyExists(RegistryRoot root, const Text& key);
void CreateRegistryKey(RegistryRoot root, const Text& key);
bool DeleteRegistryKey(RegistryRoot root, const Text& key);  ///< with all below; false: it was not there
std::vector<Text> RegistryValueNames(RegistryRoot root, const Text& key);
std::vector<Text> RegistrySubkeys(RegistryRoot root, const Text& key);  ///< direct ones, names only

}  // namespace rvl::platform
