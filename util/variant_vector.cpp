#include "util/variant_vector.h"

#include <optional>

#include "util/text_functions.h"

namespace rvl {
namespace {

using ObjectReference = std::shared_ptr<VariantObject>;

bool IsEmpty(const Variant& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// The value as an integer, if it is one; the empty value counts as 0.
std::optional<std::int64_t> AsInteger(const Variant& value) {
    if (IsEmpty(value)) return 0;
    if (const bool* truth = std::get_if<bool>(&value)) return *truth ? -1 : 0;
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
    return std::nullopt;
}

std::optional<double> AsDouble(const Variant& value) {
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const std::optional<std::int64_t> number = AsInteger(value)) return static_cast<double>(*number);
    return std::nullopt;
}

std::optional<TextView> AsText(const Variant& value) {
    if (IsEmpty(value)) return TextView();
    if (const Text* text = std::get_if<Text>(&value)) return TextView(*text);
    return std::nullopt;
}

bool TextsAreEqual(TextView a, TextView b, CompareMode compare) {
    return compare == CompareMode::Binary ? a == b : EqualsNoCase(a, b);
}

bool ValuesAreEqual(const Variant& a, const Variant& b, CompareMode compare) {
    if (const auto left = AsText(a), right = AsText(b); left && right)
        return TextsAreEqual(*left, *right, compare);
    if (const auto left = AsInteger(a), right = AsInteger(b); left && right) return *left == *right;
    if (const auto left = AsDouble(a), right = AsDouble(b); left && right) return *left == *right;
    return false;
}

const VariantObject& RequireObject(const Variant& value) {
    const auto* reference = std::get_if<ObjectReference>(&value);
    if (reference == nullptr) throw Error(424, "VariantVector.DeepClone", "Object required");
    if (*reference == nullptr) throw Error(91, "VariantVector.DeepClone", "Object variable not set");
    return **reference;
}

}  // namespace

bool VariantVector::AreEqual(const Variant& a, const Variant& b, CompareMode compare) {
    const auto* left = std::get_if<ObjectReference>(&a);
    const auto* right = std::get_if<ObjectReference>(&b);
    if (left != nullptr && right != nullptr) return *left == *right;
    if (left != nullptr || right != nullptr) return false;
    return ValuesAreEqual(a, b, compare);
}

void VariantVector::RemoveValue(const Variant& value) try { RemoveEqual(value); } catch (...) {
    Report("RemoveValue");
}

VariantVector VariantVector::DeepClone() const try {
    VariantVector clone;
    for (const Variant& item : Items())
        clone.Store(RequireObject(item).Clone(), true);
    return clone;
} catch (...) {
    Report("DeepClone");
    return {};
}

}  // namespace rvl
