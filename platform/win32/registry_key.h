#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "platform/registry.h"

namespace rvl::platform {

/// Failures in these raise as those of the registry do; what is missing is none of them.

struct CloseRegistryKey {
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using UniqueRegistryKey = std::unique_ptr<HKEY__, CloseRegistryKey>;

[[noreturn]] void RaiseRegistryError(LSTATUS code);

/// True when a key or value is missing; other failures raise.
bool IsMissing(LSTATUS code);

/// The names on the way down to a key, joined as the system takes them: neither first nor last nor doubled
/// separators.
std::wstring RegistryPath(const Text& key);

/// A name as the system takes it. It would end at a NUL, and mean another one.
std::wstring RegistryName(const Text& name);

/// Null when the key is missing.
UniqueRegistryKey OpenRegistryKey(RegistryRoot root, const std::wstring& path, REGSAM access);

/// Opens the key, which comes with all above it when it is missing.
UniqueRegistryKey MakeRegistryKey(RegistryRoot root, const std::wstring& path, REGSAM access);

/// Deletes a key with all below it. False: it was missing.
bool DeleteRegistryTree(RegistryRoot root, const std::wstring& path);

}  // namespace rvl::platform
