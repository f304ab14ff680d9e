#include "platform/win32/automation.h"

#include <utility>

#include "platform/win32/readable_text.h"

namespace rvl::platform {

Variant::Variant(std::wstring_view text) : Variant() {
    m_value.vt = VT_BSTR;
    m_value.bstrVal = Bstr(text).release();
}

Variant::Variant(bool value) : Variant() {
    m_value.vt = VT_BOOL;
    m_value.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(Variant&& other) noexcept : Variant() {
    std::swap(m_value, other.m_value);
}

Variant& Variant::operator=(Variant&& other) noexcept {
    std::swap(m_value, other.m_value);
    return *this;
}

std::optional<Text> Variant::AsText() const {
    Variant text;
    VARIANT value = m_value;  // still owned by this object
    if (m_value.vt == VT_NULL || m_value.vt == VT_EMPTY) return std::nullopt;
    if (FAILED(VariantChangeType(text.Get(), &value, VARIANT_ALPHABOOL, VT_BSTR))) return std::nullopt;
    BSTR characters = text.Value().bstrVal;
    return ReadableText({characters, SysStringLen(characters)});
}

std::optional<std::int32_t> Variant::AsNumber() const {
    Variant number;
    VARIANT value = m_value;
    if (FAILED(VariantChangeType(number.Get(), &value, 0, VT_I4))) return std::nullopt;
    return number.Value().lVal;
}

ComPointer<IDispatch> Variant::AsObject() const {
    if (m_value.vt != VT_DISPATCH || m_value.pdispVal == nullptr) return nullptr;
    m_value.pdispVal->AddRef();
    return ComPointer<IDispatch>(m_value.pdispVal);
}

HRESULT Invoke(IDispatch& object, const wchar_t* member, Variant& result,
               const std::vector<Variant>& arguments) {
    std::wstring name = member;
    OLECHAR* names = name.data();
    DISPID id = DISPID_UNKNOWN;
    const HRESULT known = object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(known)) return known;
    std::vector<VARIANTARG> lastFirst;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        lastFirst.push_back(argument->Value());
    DISPPARAMS parameters{lastFirst.data(), nullptr, static_cast<UINT>(lastFirst.size()), 0};
    return object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                         &parameters, result.Get(), nullptr, nullptr);
}

}  // namespace rvl::platform
