#include "platform/file_handle.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/win32/long_path.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

/// Far from what the calls can take, and from what they would hold the network up for.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 26;

DWORD AccessRights(FileAccess access) {
    switch (access) {
        case FileAccess::Read:
            return GENERIC_READ;
        case FileAccess::Write:
            return GENERIC_WRITE;
        case FileAccess::Append:
            return FILE_APPEND_DATA;  // without the right to write elsewhere
        case FileAccess::ReadWrite:
            break;
    }
    return GENERIC_READ | GENERIC_WRITE;
}

HANDLE Native(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

DWORD AtOnce(std::size_t size) {
    return static_cast<DWORD>(std::min(size, kMostAtOnce));
}

}  // namespace

FileHandle::~FileHandle() {
    Close();
}

FileHandle::FileHandle(FileHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, -1)) {}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
}

int FileHandle::Open(const Text& path, FileAccess access, FileShare share, FileDisposition disposition) {
    Close();
    // The numbers of sharing and disposition are the system's own.
    UniqueHandle file =
        OwnHandle(CreateFileW(LongPath(path).c_str(), AccessRights(access), static_cast<DWORD>(share),
                              nullptr, static_cast<DWORD>(disposition), FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return LastError();
    // A pipe or a device in the way must not hang the service.
    if (GetFileType(file.get()) != FILE_TYPE_DISK) return ERROR_ACCESS_DENIED;
    m_handle = reinterpret_cast<std::intptr_t>(file.release());
    return 0;
}

int FileHandle::Read(char* buffer, std::size_t size, std::size_t& read) {
    DWORD count = 0;
    const bool done = ReadFile(Native(m_handle), buffer, AtOnce(size), &count, nullptr) != 0;
    read = count;
    return done ? 0 : LastError();
}

int FileHandle::Write(const char* data, std::size_t size, std::size_t& written) {
    written = 0;
    while (written < size) {
        DWORD count = 0;
        if (!WriteFile(Native(m_handle), data + written, AtOnce(size - written), &count, nullptr))
            return LastError();
        written += count;
    }
    return 0;
}

int FileHandle::Seek(std::int64_t offset, FileOrigin origin, std::int64_t& position) {
    LARGE_INTEGER wanted{}, reached{};
    wanted.QuadPart = offset;
    if (!SetFilePointerEx(Native(m_handle), wanted, &reached, static_cast<DWORD>(origin))) return LastError();
    position = reached.QuadPart;
    return 0;
}

int FileHandle::Length(std::int64_t& bytes) const {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(Native(m_handle), &size)) return LastError();
    bytes = size.QuadPart;
    return 0;
}

void FileHandle::Close() {
    if (m_handle != -1) CloseHandle(Native(std::exchange(m_handle, -1)));
}

}  // namespace rvl::platform
