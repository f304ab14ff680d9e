#include "util/long_vector.h"

#include <functional>

#include "util/text_functions.h"

namespace rvl {

void LongVector::Sort() try { SortItems(std::less<>()); } catch (...) {
    Report("Sort");
}

Text LongVector::ToString(TextView separator) const try {
    return Joined(separator, NumberText);
} catch (...) {
    Report("ToString");
    return {};
}

void LongVector::FromString(TextView text, TextView separator) try {
    Clear();
    if (text.empty()) return;
    for (const TextView piece : SplitAt(text, separator))
        Store(ToLong(piece), true);
} catch (...) {
    Report("FromString");
}

void LongVector::RemoveLong(std::int32_t value) try { RemoveEqual(value); } catch (...) {
    Report("RemoveLong");
}

void LongVector::AddAll(const LongVector& other) try { StoreAll(other, true); } catch (...) {
    Report("AddAll");
}

LongVector LongVector::Clone() const try {
    LongVector clone;
    clone.StoreAll(*this, true);
    return clone;
} catch (...) {
    Report("Clone");
    return {};
}

LongVector LongVector::Union(const LongVector& other) const try {
    LongVector result = Clone();
    result.StoreAll(other, false);
    return result;
} catch (...) {
    Report("Union");
    return {};
}

LongVector LongVector::Intersection(const LongVector& other) const try {
    LongVector result;
    for (const std::int32_t value : Items())
        if (other.Contains(value)) result.Store(value, false);
    return result;
} catch (...) {
    Report("Intersection");
    return {};
}

LongVector LongVector::Subtract(const LongVector& other) const try {
    LongVector result = Clone();
    for (const std::int32_t value : other.Items())
        result.RemoveEqual(value);
    return result;
} catch (...) {
    Report("Subtract");
    return {};
}

}  // namespace rvl
