#pragma once

#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "util/handle_error.h"
#include "util/random_text.h"

namespace rvl {

/// Divides low...high around a random element and returns where that one ends up.
template <typename T, typename Less>
std::int32_t Partition(std::vector<T>& items, std::int32_t low, std::int32_t high, const Less& less) {
    const std::int32_t chosen = RandomBetween(low, high);
    T pivot = std::move(items[chosen]);
    if (chosen != low) items[chosen] = std::move(items[low]);
    for (;;) {
        while (low < high && !less(items[high], pivot))
            --high;
        if (low == high) break;
        items[low] = std::move(items[high]);  // the hole is now at high
        while (low < high && less(items[low], pivot))
            ++low;
        if (low == high) break;
        items[high] = std::move(items[low]);  // the hole is back at low
    }
    items[low] = std::move(pivot);
    return low;
}

/// Recurses into the smaller part only, so that many equal elements cannot exhaust the stack.
template <typename T, typename Less>
void SortRange(std::vector<T>& items, std::int32_t low, std::int32_t high, const Less& less) {
    while (high > low) {
        const std::int32_t middle = Partition(items, low, high, less);
        if (middle - low < high - middle) {
            SortRange(items, low, middle - 1, less);
            low = middle + 1;
        } else {
            SortRange(items, middle + 1, high, less);
            high = middle - 1;
        }
    }
}

/// Not stable. Indices of a sort have 16 bits: more than 32768 elements raise 6 "Overflow".
template <typename T, typename Less>
void QuickSort(std::vector<T>& items, const Less& less, TextView source) {
    if (items.size() <= 1) return;
    constexpr std::size_t kHighestIndex = std::numeric_limits<std::int16_t>::max();
    if (items.size() - 1 > kHighestIndex) RaiseOverflow(source);
    SortRange(items, 0, static_cast<std::int32_t>(items.size()) - 1, less);
}

}  // namespace rvl
