#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl::deployserver {

/// A file of a folder that is published.
struct PublishedFile {
    Text name;  ///< relative to the folder, with "\" between its steps
    Text localPath;
    Text digest;
};

/// All files below the folder, ordered by name. Raises an Error that names everything in it that cannot be
/// published: names that messages or Windows paths cannot carry, names that differ in case only, links to
/// folders, devices and what cannot be read.
std::vector<PublishedFile> ReadPublishedFolder(const Text& folder);

/// The name of the folder itself, wherever a path such as ".." leads; empty for a root.
Text NameOfFolder(const Text& folder);

}  // namespace rvl::deployserver
