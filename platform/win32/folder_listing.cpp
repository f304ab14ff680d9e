#include "platform/win32/folder_listing.h"

#include <string_view>
#include <utility>

namespace rvl::platform {

FolderListing::FolderListing(const std::wstring& pattern) {
    const HANDLE search = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &m_entry, FindExSearchNameMatch,
                                           nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search != INVALID_HANDLE_VALUE) m_search.reset(search);
}

bool FolderListing::Next() {
    if (!m_search) return false;
    if (!std::exchange(m_started, true)) return true;
    return FindNextFileW(m_search.get(), &m_entry) != 0;
}

std::wstring EntryPath(std::wstring folder, const wchar_t* name) {
    if (folder.empty()) return {};  // not the drive's root
    if (!folder.ends_with(L'\\')) folder += L'\\';
    return folder + name;
}

bool IsDots(const WIN32_FIND_DATAW& entry) {
    const std::wstring_view name = entry.cFileName;
    return name == L"." || name == L"..";
}

}  // namespace rvl::platform
