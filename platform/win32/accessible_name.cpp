#include "platform/accessible_name.h"

#include <windows.h>

#include <oleacc.h>

#include "platform/win32/com.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

// The libraries that have these do not go together.
constexpr CLSID kServicesClass{0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr IID kServices{0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};
constexpr MSAAPROPID kName{0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};

ComPointer<IAccPropServices> NameService() {
    void* service = nullptr;
    const HRESULT result =
        CoCreateInstance(kServicesClass, nullptr, CLSCTX_INPROC_SERVER, kServices, &service);
    return ComPointer<IAccPropServices>(SUCCEEDED(result) ? static_cast<IAccPropServices*>(service)
                                                          : nullptr);
}

}  // namespace

/// The name stays with the window until that closes.
void SetAccessibleName(void* control, const Text& name) {
    if (control == nullptr) return;
    const ComScope com;
    if (const auto service = NameService())
        service->SetHwndPropStr(static_cast<HWND>(control), static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                kName, Wide(name).c_str());
}

}  // namespace rvl::platform
