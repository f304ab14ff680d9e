#pragma once

#include "util/growable_array.h"

namespace rvl {

class LongVector : public GrowableArray<std::int32_t, LongVector> {
 public:
    static constexpr TextView kName = "LongVector";
    static bool AreEqual(std::int32_t a, std::int32_t b, CompareMode) { return a == b; }

    void Sort();  ///< at most 32768 elements can be sorted

    /// The numbers in decimal.
    Text ToString(TextView separator) const;

    /// Replaces the elements by the numbers between separators (of one character); none for the empty text.
    /// A piece that is no number is reported as an error, and what follows it is left out.
    void FromString(TextView text, TextView separator);

    bool Contains(std::int32_t value) const { return Find(value) >= 0; }
    void RemoveLong(std::int32_t value);   ///< every occurrence
    void AddAll(const LongVector& other);  ///< duplicates as well

    // These leave both operands as they are.
    LongVector Clone() const;
    LongVector Union(const LongVector& other) const;
    LongVector Intersection(const LongVector& other) const;  ///< each element once
    LongVector Subtract(const LongVector& other) const;
    bool Equals(const LongVector& other) const { return Items() == other.Items(); }
};

}  // namespace rvl
