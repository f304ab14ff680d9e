#include "tools/msaccess/win32/automation_object.h"

#include <algorithm>

namespace rvl::msaccess {

platform::ComPointer<IDispatch> AutomationObject::Create(std::vector<Property> properties) {
    return platform::ComPointer<IDispatch>(new AutomationObject(std::move(properties)));
}

HRESULT AutomationObject::QueryInterface(REFIID id, void** object) {
    const bool isKnown = id == __uuidof(IUnknown) || id == __uuidof(IDispatch);
    *object = isKnown ? static_cast<IDispatch*>(this) : nullptr;
    if (!isKnown) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG AutomationObject::Release() {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT AutomationObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return E_NOTIMPL;
}

HRESULT AutomationObject::GetIDsOfNames(REFIID, OLECHAR** names, UINT count, LCID, DISPID* ids) {
    const auto found = std::ranges::find_if(m_properties, [&](const Property& property) {
        return CompareStringOrdinal(names[0], -1, property.name.c_str(), -1, TRUE) == CSTR_EQUAL;
    });
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    if (found == m_properties.end() || count != 1) return DISP_E_UNKNOWNNAME;
    ids[0] = static_cast<DISPID>(found - m_properties.begin());
    return S_OK;
}

HRESULT AutomationObject::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                 UINT*) {
    const auto index = static_cast<std::size_t>(id);
    if (index >= m_properties.size() || (kind & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
    if (result != nullptr) m_properties[index].get(*result);
    return S_OK;
}

}  // namespace rvl::msaccess
