#include "runtime/registry_value.h"

#include <limits>

#include "runtime/environment_text.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

RegistryVariant AsText(const RegistryVariant& value) {
    if (const auto* number = std::get_if<std::uint32_t>(&value)) return NumberText(*number);
    return value;
}

/// A negative number is stored as the unsigned one with the same bits.
RegistryVariant AsNumber(const RegistryVariant& value) {
    const auto* text = std::get_if<Text>(&value);
    if (text == nullptr) return value;
    const std::optional<std::int64_t> number = ParseInteger64(*text);
    const bool fits = number && *number >= std::numeric_limits<std::int32_t>::min() &&
                      *number <= std::numeric_limits<std::uint32_t>::max();
    return fits ? RegistryVariant(static_cast<std::uint32_t>(*number)) : RegistryVariant();
}

RegistryVariant AsType(RegistryType type, const RegistryVariant& value) {
    return type == RegistryType::Number ? AsNumber(value) : AsText(value);
}

platform::RegistryValue Stored(RegistryType type, const RegistryVariant& value) {
    const RegistryVariant form = AsType(type, value);
    if (const auto* number = std::get_if<std::uint32_t>(&form)) return *number;
    const auto* text = std::get_if<Text>(&form);
    if (text == nullptr) RaiseTypeMismatch("cRegistry.Value");
    if (type == RegistryType::ExpandString) return platform::ExpandableText{*text};
    return *text;
}

RegistryVariant VariantOf(const platform::RegistryValue& value, bool expand) {
    if (const auto* number = std::get_if<std::uint32_t>(&value)) return *number;
    if (const auto* text = std::get_if<Text>(&value)) return *text;
    const Text& text = std::get<platform::ExpandableText>(value).text;
    return expand ? ExpandEnvironmentText(text) : text;
}

}  // namespace

RegistryVariant cRegistry::Value() const {
    const auto stored = platform::ReadRegistry(ClassKey, SectionKey, ValueKey);
    if (!stored) return Default;
    const RegistryVariant value = AsType(ValueType, VariantOf(*stored, !NoExpandStrings));
    return std::holds_alternative<std::monostate>(value) ? Default : value;
}

Text cRegistry::TextValue() const {
    const RegistryVariant value = AsText(Value());
    const auto* text = std::get_if<Text>(&value);
    return text != nullptr ? *text : Text();
}

std::uint32_t cRegistry::NumberValue() const {
    const RegistryVariant value = AsNumber(Value());
    const auto* number = std::get_if<std::uint32_t>(&value);
    return number != nullptr ? *number : 0;
}

void cRegistry::SetValue(const RegistryVariant& value) const {
    platform::WriteRegistry(ClassKey, SectionKey, ValueKey, Stored(ValueType, value));
}

bool cRegistry::DeleteValue() const {
    return platform::DeleteRegistryValue(ClassKey, SectionKey, ValueKey);
}

bool cRegistry::KeyExists() const {
    return platform::RegistryKeyExists(ClassKey, SectionKey);
}

void cRegistry::CreateKey() const {
    platform::CreateRegistryKey(ClassKey, SectionKey);
}

bool cRegistry::DeleteKey() const {
    return platform::DeleteRegistryKey(ClassKey, SectionKey);
}

std::vector<Text> cRegistry::EnumerateValues() const {
    return platform::RegistryValueNames(ClassKey, SectionKey);
}

std::vector<Text> cRegistry::EnumerateSections() const {
    return platform::RegistrySubkeys(ClassKey, SectionKey);
}

}  // namespace rvl
