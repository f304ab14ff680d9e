#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <memory>
#include <string>
#include <string_view>

namespace rvl::platform {

/// The component library for this thread as long as the object lives. A thread that uses it otherwise
/// already keeps it.
class ComScope {
 public:
    ComScope()
        : m_started(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ~ComScope() {
        if (m_started) CoUninitialize();
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

 private:
    bool m_started;
};

struct ReleaseInterface {
    void operator()(IUnknown* object) const { object->Release(); }
};

/// Owns one reference to an object.
template <class Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseInterface>;

/// A new object of a class of this or another process; null with the reason in `result`.
template <class Interface>
ComPointer<Interface> CreateObject(REFCLSID classId, HRESULT& result) {
    void* object = nullptr;
    result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                              __uuidof(Interface), &object);
    return ComPointer<Interface>(SUCCEEDED(result) ? static_cast<Interface*>(object) : nullptr);
}

/// The same object through another of its interfaces; null when it has none such.
template <class Interface>
ComPointer<Interface> QueryFor(IUnknown& object) {
    void* other = nullptr;
    if (FAILED(object.QueryInterface(__uuidof(Interface), &other))) return nullptr;
    return ComPointer<Interface>(static_cast<Interface*>(other));
}

struct FreeBstr {
    void operator()(OLECHAR* text) const { SysFreeString(text); }
};
using UniqueBstr = std::unique_ptr<OLECHAR, FreeBstr>;

inline UniqueBstr Bstr(std::wstring_view text) {
    return UniqueBstr(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}

/// The Win32 code of a result where it carries one, else the result itself.
inline int CodeOf(HRESULT result) {
    if (SUCCEEDED(result)) return 0;
    return HRESULT_FACILITY(result) == FACILITY_WIN32 ? HRESULT_CODE(result) : static_cast<int>(result);
}

}  // namespace rvl::platform
