#include <algorithm>
#include <optional>
#include <utility>

#include "platform/files.h"
#include "platform/latin1_case.h"
#include "platform/wildcard.h"
#include "platform/win32/folder_listing.h"
#include "platform/win32/long_path.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

bool ComesBefore(char one, char other) {
    return static_cast<unsigned char>(LowerLatin1(one)) < static_cast<unsigned char>(LowerLatin1(other));
}

FileSeconds SecondsOf(const FILETIME& time) {
    constexpr std::int64_t kUnitsPerSecond = 10'000'000, kFrom1601To1970 = 11'644'473'600;
    const auto units = static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return units / kUnitsPerSecond - kFrom1601To1970;
}

/// None when the name is no Text.
std::optional<DirectoryEntry> EntryOf(const WIN32_FIND_DATAW& found) {
    std::optional<Text> name = TryNarrow(found.cFileName);
    if (!name) return std::nullopt;
    return DirectoryEntry{std::move(*name),
                          static_cast<std::int64_t>(found.nFileSizeHigh) << 32 | found.nFileSizeLow,
                          found.dwFileAttributes,
                          SecondsOf(found.ftCreationTime),
                          SecondsOf(found.ftLastWriteTime),
                          SecondsOf(found.ftLastAccessTime)};
}

/// The system itself would match the short names that it invents for long ones, too.
std::vector<DirectoryEntry> MatchFolder(const Text& folder, TextView pattern) {
    std::vector<DirectoryEntry> entries;
    FolderListing listing(EntryPath(LongPath(folder), L"*"));
    while (listing.Next()) {
        std::optional<DirectoryEntry> entry = EntryOf(listing.Entry());
        if (entry && MatchesWildcard(entry->name, pattern)) entries.push_back(std::move(*entry));
    }
    std::sort(entries.begin(), entries.end(), [](const DirectoryEntry& a, const DirectoryEntry& b) {
        return std::lexicographical_compare(a.name.begin(), a.name.end(), b.name.begin(), b.name.end(),
                                            ComesBefore);
    });
    return entries;
}

/// A path without wildcards names one entry; with a trailing separator or for a drive's root, none.
std::vector<DirectoryEntry> MatchOne(const Text& path, TextView lastStep) {
    if (lastStep.empty()) return {};
    FolderListing listing(LongPath(path));
    std::optional<DirectoryEntry> entry = listing.Next() ? EntryOf(listing.Entry()) : std::nullopt;
    if (!entry) return {};
    return {std::move(*entry)};
}

}  // namespace

std::vector<DirectoryEntry> FindEntries(const Text& pattern) {
    const std::size_t separator = pattern.find_last_of("\\/:");
    const std::size_t begin = separator == Text::npos ? 0 : separator + 1;
    TextView lastStep = TextView(pattern).substr(begin);
    if (lastStep.find_first_of("*?") == TextView::npos) return MatchOne(pattern, lastStep);
    if (lastStep == "*.*") lastStep = "*";  // every name, with or without a dot
    return MatchFolder(begin == 0 ? Text(".") : pattern.substr(0, begin), lastStep);
}

}  // namespace rvl::platform
