#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/shell_link.h"

namespace rvl::platform {

// The content of a shortcut file, after the public description "[MS-SHLLINK]: Shell Link (.LNK) Binary File
// Format". Texts are written in UTF-16 and read in UTF-16 or 8 bits.

inline constexpr std::uint32_t kLinkHeaderSize = 0x4C;

/// {00021401-0000-0000-C000-000000000046}
inline constexpr std::string_view kLinkClass{
    "\x01\x14\x02\x00\x00\x00\x00\x00\xC0\x00\x00\x00\x00\x00\x00\x46", 16};

/// What follows the header, in the order it is stored.
enum LinkFlags : std::uint32_t {
    kHasItemList = 0x01,
    kHasLocation = 0x02,
    kHasName = 0x04,
    kHasRelativePath = 0x08,
    kHasWorkingDirectory = 0x10,
    kHasArguments = 0x20,
    kHasIconLocation = 0x40,
    kIsUnicode = 0x80,
};

/// 1, 3 or 7; every other show command counts as 1.
constexpr int KnownShowCommand(std::uint32_t command) {
    return command == 3 || command == 7 ? static_cast<int>(command) : 1;
}

/// The link's target is absolute or empty. Win32 codes: 0, 3 for a target without a drive, 87 when a text is
/// too long.
int FormatLink(const ShellLink& link, std::string& bytes);

/// Win32 codes: 0, 11 for what is no shortcut. Raises as WideToNarrow does.
int ParseLink(std::string_view bytes, ShellLink& link);

}  // namespace rvl::platform
