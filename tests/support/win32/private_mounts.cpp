#include "tests/support/private_mounts.h"

#include <windows.h>

#include <utility>

#include "tests/support/win32/utf16.h"

namespace rvl::test {

PrivateMounts::PrivateMounts() = default;

PrivateMounts::~PrivateMounts() {
    Unmount("");
}

bool PrivateMounts::MountDisk(const std::string&, const std::string&) {
    return false;
}

bool PrivateMounts::Hold(const std::string& file) {
    Unmount("");
    const HANDLE handle =
        CreateFileW(Utf16(file).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    m_held = reinterpret_cast<std::intptr_t>(handle);
    return true;
}

void PrivateMounts::Unmount(const std::string&) {
    if (m_held != 0) CloseHandle(reinterpret_cast<HANDLE>(std::exchange(m_held, 0)));
}

}  // namespace rvl::test
