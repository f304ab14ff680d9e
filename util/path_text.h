#pragma once

#include "platform/text.h"

namespace rvl {

/// The parent folder with a trailing backslash; a trailing backslash of the path is ignored. Empty when the
/// path has no other backslash.
Text BackOneDir(TextView path);

/// The empty path stays empty: "\" would be another folder.
Text WithTrailingBackslash(TextView path);

// "\" and "/" both separate here, as they do where files are opened.

/// Everything up to and including the last separator; empty when there is none.
Text FolderOf(TextView path);

/// Everything after the last separator.
Text FileNameOf(TextView path);

}  // namespace rvl
