#include "util/path_text.h"

namespace rvl {
namespace {

/// 0 when the path has no separator.
std::size_t NamePosition(TextView path) {
    return path.find_last_of("\\/") + 1;
}

}  // namespace

Text BackOneDir(TextView path) {
    if (path.ends_with('\\')) path.remove_suffix(1);
    return Text(path.substr(0, path.rfind('\\') + 1));
}

Text WithTrailingBackslash(TextView path) {
    Text result(path);
    if (!path.empty() && !path.ends_with('\\')) result += '\\';
    return result;
}

Text FolderOf(TextView path) {
    return Text(path.substr(0, NamePosition(path)));
}

Text FileNameOf(TextView path) {
    return Text(path.substr(NamePosition(path)));
}

}  // namespace rvl
