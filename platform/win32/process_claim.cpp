#include "platform/process_claim.h"

#include <windows.h>

#include <sddl.h>

#include <map>
#include <memory>
#include <utility>

#include "platform/win32/unique_handle.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

/// What this process holds, until it ends.
std::map<Text, UniqueHandle>& HeldClaims() {
    static std::map<Text, UniqueHandle> claims;
    return claims;
}

/// The same for every session of the workstation.
std::wstring GlobalName(const Text& name) {
    return L"Global\\RVLClient " + Wide(name);
}

/// Where a process may not use names of the workstation: of its own session.
std::wstring SessionName(const Text& name) {
    return L"Local\\RVLClient " + Wide(name);
}

struct FreeLocal {
    void operator()(void* memory) const { LocalFree(memory); }
};
using DescriptorMemory = std::unique_ptr<void, FreeLocal>;

/// The service and the processes of all users ask for each other's claims; nobody needs more than to see
/// them.
DescriptorMemory EveryoneMaySeeIt() {
    constexpr const wchar_t* kEveryoneMaySynchronize = L"D:(A;;0x100000;;;WD)";
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(kEveryoneMaySynchronize, SDDL_REVISION_1,
                                                         &descriptor, nullptr);
    return DescriptorMemory(descriptor);
}

/// The object is there for as long as somebody has it open: who makes it holds the claim. Null with the last
/// error, which for the one that somebody else has made is ERROR_ALREADY_EXISTS.
UniqueHandle MakeObject(const std::wstring& name) {
    const DescriptorMemory descriptor = EveryoneMaySeeIt();
    SECURITY_ATTRIBUTES attributes{sizeof attributes, descriptor.get(), FALSE};
    UniqueHandle object(CreateEventExW(&attributes, name.c_str(), CREATE_EVENT_MANUAL_RESET, SYNCHRONIZE));
    if (!object || GetLastError() != ERROR_ALREADY_EXISTS) return object;
    object.reset();
    SetLastError(ERROR_ALREADY_EXISTS);
    return object;
}

bool IsObjectThere(const std::wstring& name) {
    return UniqueHandle(OpenEventW(SYNCHRONIZE, FALSE, name.c_str())) != nullptr;
}

}  // namespace

bool HoldProcessClaim(const Text& name) {
    if (HeldClaims().count(name) != 0) return true;
    UniqueHandle object = MakeObject(GlobalName(name));
    if (!object && GetLastError() == ERROR_ACCESS_DENIED) object = MakeObject(SessionName(name));
    if (!object) return false;
    HeldClaims()[name] = std::move(object);
    return true;
}

/// Asking keeps the object for a moment: who wants to hold the name tries again.
bool IsProcessClaimHeld(const Text& name) {
    return IsObjectThere(GlobalName(name)) || IsObjectThere(SessionName(name));
}

}  // namespace rvl::platform
