#pragma once

#include <cstdint>
#include <memory>
#include <variant>

#include "util/growable_array.h"

namespace rvl {

/// What a VariantVector holds references to.
class VariantObject {
 public:
    virtual ~VariantObject() = default;
    virtual std::shared_ptr<VariantObject> Clone() const = 0;
};

/// A value of any type, empty to begin with, or an object reference (which may be null).
using Variant = std::variant<std::monostate, bool, std::int32_t, std::int64_t, double, Text,
                             std::shared_ptr<VariantObject>>;

class VariantVector : public GrowableArray<Variant, VariantVector> {
 public:
    static constexpr TextView kName = "VariantVector";

    /// Object references are equal when they are the same object, values when they compare equal: numbers of
    /// any type by value (true is -1), texts as `compare` says, the empty value with 0 and the empty text.
    static bool AreEqual(const Variant& a, const Variant& b, CompareMode compare);

    void RemoveValue(const Variant& value);  ///< every equal element

    /// A vector of the clones of our elements. An element that is no object is reported as 424 "Object
    /// required", a null reference as 91 "Object variable not set"; the result is then empty.
    VariantVector DeepClone() const;
};

}  // namespace rvl
