#pragma once

#include "util/growable_array.h"

namespace rvl {

class StringVector : public GrowableArray<Text, StringVector> {
 public:
    static constexpr TextView kName = "StringVector";
    static bool AreEqual(TextView a, TextView b, CompareMode compare);

    /// At most 32768 elements can be sorted; equal ones may change places.
    void Sort(CompareMode compare);
    void SortPaths(bool subfoldersFirst);  ///< by ComparePaths

    /// -1, 0 or 1: by folder, then by name, without regard to case. With subfoldersFirst what lies in a
    /// folder comes before what lies in none.
    static int ComparePaths(TextView a, TextView b, bool subfoldersFirst);

    Text ToString(TextView separator) const;

    /// Replaces the elements by the pieces between separators, empty ones included. Only a separator of one
    /// character separates.
    void FromString(TextView text, TextView separator);

    bool Contains(const Text& value, CompareMode compare) const { return Find(value, 0, compare) >= 0; }
    void RemoveString(const Text& value, CompareMode compare);  ///< every equal element
};

}  // namespace rvl
