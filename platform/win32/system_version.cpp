#include <windows.h>

#include "platform/identity.h"
#include "platform/win32/wide.h"

namespace rvl::platform {

/// The kernel's own answer: the public call names an older system to a program that does not declare to know
/// the one that runs.
bool QuerySystemVersion(SystemVersion& version) {
    using RtlGetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
    const FARPROC symbol = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion");
    OSVERSIONINFOW information{};
    information.dwOSVersionInfoSize = sizeof information;
    if (symbol == nullptr ||
        reinterpret_cast<RtlGetVersion>(reinterpret_cast<void*>(symbol))(&information) != 0)
        return false;
    version = {information.dwPlatformId, information.dwMajorVersion, information.dwMinorVersion,
               information.dwBuildNumber, TryNarrow(information.szCSDVersion).value_or("")};
    return true;
}

}  // namespace rvl::platform
