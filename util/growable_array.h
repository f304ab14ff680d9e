#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "util/handle_error.h"
#include "util/quick_sort.h"

namespace rvl {

/// How texts are compared: by their codes, or without regard to case.
enum class CompareMode { Binary = 0, Text = 1 };

/// What the vectors share. `Vector` is the class that derives from it; it tells its name (kName, under which
/// errors are reported) and when two elements are equal (AreEqual). Indices are zero-based. An operation
/// that fails reports its error and returns.
template <typename T, typename Vector>
class GrowableArray {
 public:
    std::int32_t Count() const { return static_cast<std::int32_t>(m_items.size()); }

    /// Highest index there is room for; -1 when nothing is allocated.
    std::int32_t Upper() const { return m_upper; }

    /// An index outside the vector is reported as 9 "Subscript out of range" and gives an empty element.
    const T& Item(std::int32_t index) const;

    void Clear();

    /// The index of the value: of the equal element already there when duplicates are not allowed.
    std::int32_t Add(T value, bool allowDuplicates, CompareMode compare = CompareMode::Binary);

    /// Removes the element, if there is one, and gives back the room that is left over.
    void Remove(std::int32_t index);

    void Reverse() { std::reverse(m_items.begin(), m_items.end()); }

    /// First index from start on whose element equals the value; -1 when there is none.
    std::int32_t Find(const T& value, std::int32_t start = 0,
                      CompareMode compare = CompareMode::Binary) const;

    void Copy(const Vector& other);
    void Append(const Vector& other, bool allowDuplicates, CompareMode compare = CompareMode::Binary);

 protected:
    // These raise their errors; the public operations report them.
    std::int32_t Store(T value, bool allowDuplicates, CompareMode compare = CompareMode::Binary);
    void StoreAll(const Vector& other, bool allowDuplicates, CompareMode compare = CompareMode::Binary);
    void RemoveEqual(T value, CompareMode compare = CompareMode::Binary);  // a copy: it may be an element
    template <typename Less>
    void SortItems(const Less& less) {
        QuickSort(m_items, less, Vector::kName);
    }
    template <typename ToText>
    Text Joined(TextView separator, const ToText& toText) const;

    const std::vector<T>& Items() const { return m_items; }

    /// In a catch block of the operation.
    static void Report(TextView operation) { HandleError(Text(Vector::kName) + "." + Text(operation)); }

 private:
    bool Holds(std::int32_t index) const { return index >= 0 && index < Count(); }
    void Grow();
    void Shrink();

    std::vector<T> m_items;
    std::int32_t m_upper = -1;
};

template <typename T, typename Vector>
const T& GrowableArray<T, Vector>::Item(std::int32_t index) const try {
    if (!Holds(index)) throw Error(9, Text(Vector::kName) + ".Item", "Subscript out of range");
    return m_items[static_cast<std::size_t>(index)];
} catch (...) {
    static const T none{};
    Report("Item");
    return none;
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::Clear() {
    m_items = std::vector<T>();
    m_upper = -1;
}

template <typename T, typename Vector>
std::int32_t GrowableArray<T, Vector>::Add(T value, bool allowDuplicates, CompareMode compare) try {
    return Store(std::move(value), allowDuplicates, compare);
} catch (...) {
    Report("Add");
    return -1;
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::Remove(std::int32_t index) try {
    if (!Holds(index)) return;
    m_items.erase(m_items.begin() + index);
    Shrink();
} catch (...) {
    Report("Remove");
}

template <typename T, typename Vector>
std::int32_t GrowableArray<T, Vector>::Find(const T& value, std::int32_t start, CompareMode compare) const {
    for (std::int32_t index = std::max(start, 0); index < Count(); ++index)
        if (Vector::AreEqual(m_items[static_cast<std::size_t>(index)], value, compare)) return index;
    return -1;
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::Copy(const Vector& other) try {
    if (this == &other) return;
    Clear();
    StoreAll(other, true);
} catch (...) {
    Report("Copy");
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::Append(const Vector& other, bool allowDuplicates, CompareMode compare) try {
    StoreAll(other, allowDuplicates, compare);
} catch (...) {
    Report("Append");
}

template <typename T, typename Vector>
std::int32_t GrowableArray<T, Vector>::Store(T value, bool allowDuplicates, CompareMode compare) {
    if (!allowDuplicates) {
        const std::int32_t found = Find(value, 0, compare);
        if (found >= 0) return found;
    }
    if (Count() == m_upper + 1) Grow();
    m_items.push_back(std::move(value));
    return Count() - 1;
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::StoreAll(const Vector& other, bool allowDuplicates, CompareMode compare) {
    const std::vector<T>& items = static_cast<const GrowableArray&>(other).m_items;
    const std::size_t count = items.size();  // a vector appended to itself grows meanwhile
    for (std::size_t i = 0; i < count; ++i)
        Store(items[i], allowDuplicates, compare);
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::RemoveEqual(T value, CompareMode compare) {
    const auto equal = [&](const T& item) { return Vector::AreEqual(item, value, compare); };
    if (std::erase_if(m_items, equal) > 0) Shrink();
}

template <typename T, typename Vector>
template <typename ToText>
Text GrowableArray<T, Vector>::Joined(TextView separator, const ToText& toText) const {
    Text joined;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        if (i > 0) joined += separator;
        joined += toText(m_items[i]);
    }
    return joined;
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::Grow() {
    constexpr std::int32_t kSmallestStep = 100;
    const std::int32_t upper = m_upper + (m_upper < 101 ? kSmallestStep : m_upper);
    m_items.reserve(static_cast<std::size_t>(upper) + 1);
    m_upper = upper;
}

template <typename T, typename Vector>
void GrowableArray<T, Vector>::Shrink() {
    m_upper = Count() - 1;
    m_items.shrink_to_fit();
}

}  // namespace rvl
