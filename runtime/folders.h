#pragma once

#include <cstdint>

#include "platform/error.h"

namespace rvl {

bool FileExists(const Text& path);
bool DirExists(const Text& path);

/// Length in bytes; a missing file raises error 53.
std::int64_t FileLen(const Text& path);

/// The whole file; errors are reported and raised again.
Text ReadFromFile(const Text& path);

/// Creates every missing level of the folder, from the top down; the server level of "\\server\share" is
/// never created. On failure the result is false and `problem`, when given, tells number and description.
bool CreateLongDirectory(const Text& path, ErrorRecord* problem = nullptr);

enum class Subfolders { Count, SearchForFiles };

/// True when the folder has any entry other than "." and ".."; when its subfolders are searched for files,
/// empty ones do not count.
bool DoesDirectoryContainFilesOrFolders(const Text& folder, Subfolders subfolders = Subfolders::Count);

/// Removes the folder with the empty folders below it, then its parents, while there are no files below them
/// and they lie below `dontGoAbove`. Raises an error when the folder does not lie inside that one.
void PruneEmptyDirectories(const Text& folder, const Text& dontGoAbove);

/// The same without a look below: an empty folder inside, which may be somebody's own, keeps its parents.
void RemoveEmptyFolders(const Text& folder, const Text& dontGoAbove);

}  // namespace rvl
