#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace rvl::platform {

/// What the system finds for a path whose last step may hold wildcards, one entry after the other.
class FolderListing {
 public:
    explicit FolderListing(const std::wstring& pattern);

    /// False after the last entry, or when there is none to read.
    bool Next();

    const WIN32_FIND_DATAW& Entry() const { return m_entry; }  ///< of the last successful Next
    bool IsReadable() const { return m_search != nullptr; }

 private:
    struct Close {
        void operator()(HANDLE search) const { FindClose(search); }
    };
    WIN32_FIND_DATAW m_entry{};
    std::unique_ptr<void, Close> m_search;
    bool m_started = false;
};

/// The path of an entry, "*" for all, of a folder that may end with a separator; empty for an empty one.
std::wstring EntryPath(std::wstring folder, const wchar_t* name);

/// "." or ".."
bool IsDots(const WIN32_FIND_DATAW& entry);

}  // namespace rvl::platform
