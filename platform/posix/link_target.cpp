#include "platform/posix/link_target.h"

#include <algorithm>
#include <ctime>

#include "platform/posix/link_bytes.h"

namespace rvl::platform {
namespace {

// The items' content is not part of [MS-SHLLINK]; they are written as Windows XP did, which every later
// Windows reads: type, dates, 8-bit name, and an extension block with the name in UTF-16.
constexpr std::uint8_t kFolderItem = 0x31;
constexpr std::uint8_t kFileItem = 0x32;
constexpr std::uint16_t kExtensionVersion = 3;
constexpr std::uint32_t kExtensionSignature = 0xBEEF0004;

/// {20D04FE0-3AEA-1069-A2D8-08002B30309D}, the shell's name of "My Computer", as an item.
constexpr char kMyComputer[] =
    "\x14\x00\x1F\x50\xE0\x4F\xD0\x20\xEA\x3A\x69\x10\xA2\xD8\x08\x00\x2B\x30\x30\x9D";

/// An item is its content after its length, which counts itself.
void AppendItem(ByteWriter& list, const ByteWriter& content) {
    list.U16(static_cast<std::uint16_t>(content.Size() + 2));
    list.Raw(content.Bytes());
}

void AppendDrive(ByteWriter& list, TextView drive) {
    ByteWriter content;
    content.U8(0x2F);
    content.Raw(drive);
    content.Raw("\\");
    content.Zeros(19);
    AppendItem(list, content);
}

ByteWriter NameExtension(const DirectoryEntry& entry, std::uint32_t offsetInItem) {
    ByteWriter block;
    constexpr std::uint16_t kNameOffset = 20;
    block.U16(static_cast<std::uint16_t>(kNameOffset + entry.name.size() * 2 + 4));
    block.U16(kExtensionVersion);
    block.U32(kExtensionSignature);
    block.U32(FatTimeOf(entry.created));
    block.U32(FatTimeOf(entry.lastAccess));
    block.U16(kNameOffset);
    block.U16(0);  // no localised name
    block.Wide(entry.name);
    block.U16(0);
    block.U16(static_cast<std::uint16_t>(offsetInItem));
    return block;
}

void AppendEntry(ByteWriter& list, const DirectoryEntry& entry) {
    ByteWriter content;
    const bool isFolder = (entry.attributes & kAttributeDirectory) != 0;
    content.U8(isFolder ? kFolderItem : kFileItem);
    content.U8(0);
    content.U32(static_cast<std::uint32_t>(entry.size));
    content.U32(FatTimeOf(entry.lastWrite));
    content.U16(static_cast<std::uint16_t>(entry.attributes));
    content.Raw(entry.name);
    content.U8(0);
    content.PadToEven();
    content.Raw(NameExtension(entry, content.Size() + 2).Bytes());
    AppendItem(list, content);
}

/// What stands for a step that does not exist: the name alone, a folder unless it is the last.
DirectoryEntry Assumed(TextView name, bool isLast) {
    DirectoryEntry entry;
    entry.name = name;
    entry.attributes = isLast ? kAttributeArchive : kAttributeDirectory;
    return entry;
}

}  // namespace

std::optional<DirectoryEntry> EntryAt(const Text& path) {
    if (path.find_first_of("*?") != Text::npos) return std::nullopt;  // a pattern names no one file
    std::vector<DirectoryEntry> entries = FindEntries(path);
    return entries.empty() ? std::nullopt : std::optional(std::move(entries.front()));
}

std::uint64_t FileTimeOf(FileSeconds moment) {
    constexpr FileSeconds kFrom1601To1970 = 11644473600;
    return static_cast<std::uint64_t>(std::max<FileSeconds>(moment + kFrom1601To1970, 0)) * 10'000'000;
}

std::uint32_t FatTimeOf(FileSeconds moment) {
    std::tm utc{};
    const std::time_t seconds = moment;
    if (gmtime_r(&seconds, &utc) == nullptr || utc.tm_year < 80 || utc.tm_year > 207) return 0;
    const int date = (utc.tm_year - 80) << 9 | (utc.tm_mon + 1) << 5 | utc.tm_mday;
    const int time = utc.tm_hour << 11 | utc.tm_min << 5 | utc.tm_sec / 2;
    return static_cast<std::uint32_t>(time) << 16 | static_cast<std::uint32_t>(date);
}

std::string TargetItemList(const Text& path) {
    ByteWriter items;
    items.Raw({kMyComputer, sizeof kMyComputer - 1});
    AppendDrive(items, TextView(path).substr(0, 2));
    for (std::size_t start = 3; start < path.size();) {
        const std::size_t end = std::min(path.find('\\', start), path.size());
        const TextView name = TextView(path).substr(start, end - start);
        AppendEntry(items, EntryAt(path.substr(0, end)).value_or(Assumed(name, end == path.size())));
        start = end + 1;
    }
    items.U16(0);
    ByteWriter list;
    list.U16(static_cast<std::uint16_t>(items.Size()));
    list.Raw(items.Bytes());
    return list.Bytes();
}

}  // namespace rvl::platform
