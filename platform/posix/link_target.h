#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/files.h"

namespace rvl::platform {

/// What the folder says of a file or folder; none when it does not exist.
std::optional<DirectoryEntry> EntryAt(const Text& path);

/// A moment as NTFS keeps it: units of 100 ns since 1601-01-01 00:00:00 UTC.
std::uint64_t FileTimeOf(FileSeconds moment);

/// A moment as FAT keeps it: date in the low word, time of day (steps of 2 s, UTC) in the high word; 0
/// outside the years 1980 to 2107.
std::uint32_t FatTimeOf(FileSeconds moment);

/// The shell's item list of an absolute path on a drive ("My Computer", drive, folders, file), with its
/// length in front ([MS-SHLLINK] 2.2). Windows follows it first. Empty when it grows beyond the format's
/// 65535 bytes.
std::string TargetItemList(const Text& path);

}  // namespace rvl::platform
