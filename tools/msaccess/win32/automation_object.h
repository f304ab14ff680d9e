#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "platform/win32/com.h"

namespace rvl::msaccess {

/// An object for other programs' scripts: properties with names.
class AutomationObject final : private IDispatch {
 public:
    struct Property {
        std::wstring name;
        std::function<void(VARIANT&)> get;
    };

    static platform::ComPointer<IDispatch> Create(std::vector<Property> properties);

 private:
    explicit AutomationObject(std::vector<Property> properties) : m_properties(std::move(properties)) {}
    ~AutomationObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID language, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, OLECHAR** names, UINT count, LCID language,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID language, WORD kind,
                                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                     UINT* badArgument) override;

    std::vector<Property> m_properties;
    std::atomic<ULONG> m_references = 1;
};

}  // namespace rvl::msaccess
