#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl::platform {

/// Files and folders by the system's paths ("C:\folder\file"; see the README for what they mean on Linux).
/// Results are Win32 error codes, 0 for success: 2 file not found, 3 path not found, 5 access denied,
/// 80 / 183 already exists, 112 disk full, 145 not empty ...

bool FileExists(const Text& path);       ///< false for a folder
bool DirectoryExists(const Text& path);  ///< false for a file
int FileLength(const Text& path, std::int64_t& bytes);
int CopyFileTo(const Text& source, const Text& destination);  ///< overwrites; no part of a file stays
int MoveFileTo(const Text& source, const Text& destination);  ///< within one drive; replaces, all or nothing
int DeleteFileAt(const Text& path);

/// True for the program of a running process: it can be neither deleted (5) nor replaced.
bool IsRunningProgram(const Text& path);

int MakeDirectory(const Text& path);      ///< one level
int RemoveDirectoryAt(const Text& path);  ///< an empty one

/// Attribute bits of a directory entry.
inline constexpr std::uint32_t kAttributeReadOnly = 1;
inline constexpr std::uint32_t kAttributeHidden = 2;
inline constexpr std::uint32_t kAttributeDirectory = 16;
inline constexpr std::uint32_t kAttributeArchive = 32;

/// A moment as files store it: seconds since 1970-01-01 00:00:00 UTC.
using FileSeconds = std::int64_t;

struct DirectoryEntry {
    Text name;  ///< without folder
    std::int64_t size = 0;
    std::uint32_t attributes = 0;
    FileSeconds created = 0;
    FileSeconds lastWrite = 0;
    FileSeconds lastAccess = 0;
};

/// The entries that match a path whose last step may hold the wildcards * and ?; "." and ".." match like
/// any other name. Empty when nothing matches or the folder cannot be read. Names that cannot become a
/// Text are left out.
std::vector<DirectoryEntry> FindEntries(const Text& pattern);

/// True when the folder holds anything, also what FindEntries leaves out.
bool HasEntries(const Text& folder);

/// True when the folder or one below it holds anything that is no folder.
bool HasFilesBelow(const Text& folder);

}  // namespace rvl::platform
