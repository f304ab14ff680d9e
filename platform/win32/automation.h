#pragma once

#include <optional>
#include <vector>

#include "platform/text.h"
#include "platform/win32/com.h"

namespace rvl::platform {

/// A value of an automation object.
class Variant {
 public:
    Variant() { VariantInit(&m_value); }
    explicit Variant(std::wstring_view text);
    explicit Variant(bool value);
    ~Variant() { VariantClear(&m_value); }
    Variant(Variant&& other) noexcept;
    Variant& operator=(Variant&& other) noexcept;
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    VARIANT* Get() { return &m_value; }
    const VARIANT& Value() const { return m_value; }

    std::optional<Text> AsText() const;  ///< also of a number; none for what has no text
    std::optional<std::int32_t> AsNumber() const;
    ComPointer<IDispatch> AsObject() const;  ///< null when it is none

 private:
    VARIANT m_value;
};

/// Reads a property or calls a method by its name.
HRESULT Invoke(IDispatch& object, const wchar_t* member, Variant& result,
               const std::vector<Variant>& arguments = {});

}  // namespace rvl::platform
