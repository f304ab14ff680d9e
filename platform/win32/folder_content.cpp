#include "platform/files.h"
#include "platform/win32/folder_listing.h"
#include "platform/win32/long_path.h"

namespace rvl::platform {
namespace {

/// A link to a folder elsewhere is none: what lies there does not lie below this one.
bool IsFolder(const WIN32_FIND_DATAW& entry) {
    const bool isLink = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                        IsReparseTagNameSurrogate(entry.dwReserved0);
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !isLink;
}

/// A subfolder that cannot be read may hold files: it counts as if it did.
bool MayHoldFiles(const std::wstring& folder) {
    FolderListing listing(EntryPath(folder, L"*"));
    if (!listing.IsReadable()) return true;
    while (listing.Next()) {
        if (IsDots(listing.Entry())) continue;
        if (!IsFolder(listing.Entry()) || MayHoldFiles(EntryPath(folder, listing.Entry().cFileName)))
            return true;
    }
    return false;
}

}  // namespace

bool HasEntries(const Text& folder) {
    FolderListing listing(EntryPath(LongPath(folder), L"*"));
    while (listing.Next())
        if (!IsDots(listing.Entry())) return true;
    return false;
}

/// A folder that cannot even be looked into is none.
bool HasFilesBelow(const Text& folder) {
    const std::wstring path = LongPath(folder);
    return FolderListing(EntryPath(path, L"*")).IsReadable() && MayHoldFiles(path);
}

}  // namespace rvl::platform
