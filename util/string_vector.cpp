#include "util/string_vector.h"

#include "util/text_functions.h"

namespace rvl {
namespace {

struct PathParts {
    TextView folder;
    TextView name;
};

PathParts SplitPath(TextView path) {
    const std::size_t last = path.rfind('\\');
    if (last == TextView::npos) return {{}, path};
    return {path.substr(0, last), path.substr(last + 1)};
}

}  // namespace

bool StringVector::AreEqual(TextView a, TextView b, CompareMode compare) {
    return compare == CompareMode::Binary ? a == b : EqualsNoCase(a, b);
}

void StringVector::Sort(CompareMode compare) try {
    if (compare == CompareMode::Binary)
        SortItems([](const Text& a, const Text& b) { return a < b; });
    else
        SortItems([](const Text& a, const Text& b) { return CompareNoCase(a, b) < 0; });
} catch (...) {
    Report("Sort");
}

void StringVector::SortPaths(bool subfoldersFirst) try {
    SortItems([=](const Text& a, const Text& b) { return ComparePaths(a, b, subfoldersFirst) < 0; });
} catch (...) {
    Report("SortPaths");
}

int StringVector::ComparePaths(TextView a, TextView b, bool subfoldersFirst) {
    const PathParts left = SplitPath(a), right = SplitPath(b);
    const int order = CompareNoCase(left.folder, right.folder);
    if (order == 0) return CompareNoCase(left.name, right.name);
    const bool oneWithoutFolder = left.folder.empty() || right.folder.empty();
    return subfoldersFirst && oneWithoutFolder ? -order : order;
}

Text StringVector::ToString(TextView separator) const try {
    return Joined(separator, [](const Text& item) -> const Text& { return item; });
} catch (...) {
    Report("ToString");
    return {};
}

void StringVector::FromString(TextView text, TextView separator) try {
    StringVector pieces;  // the text may be one of our own elements
    for (const TextView piece : SplitAt(text, separator))
        pieces.Store(Text(piece), true);
    *this = std::move(pieces);
} catch (...) {
    Report("FromString");
}

void StringVector::RemoveString(const Text& value, CompareMode compare) try {
    RemoveEqual(value, compare);
} catch (...) {
    Report("RemoveString");
}

}  // namespace rvl
