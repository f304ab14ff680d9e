#pragma once

#include "platform/text.h"

namespace rvl {

// Only "\" separates the steps of a path here.

/// The parent folder with a trailing backslash; a trailing backslash of the path is ignored. Empty when the
/// path has no other backslash.
Text BackOneDir(TextView path);

/// The empty path stays empty: "\" would be another folder.
Text WithTrailingBackslash(TextView path);

/// Everything up to and including the last backslash; empty when there is none.
Text FolderOf(TextView path);

/// Everything after the last backslash.
Text FileNameOf(TextView path);

}  // namespace rvl
