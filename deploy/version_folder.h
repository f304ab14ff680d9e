#pragma once

#include "deploy/local_database.h"
#include "deploy/user_folders.h"

namespace rvl {

/// Where the versions of a user's front ends go, from the template's destination (1 user profile, 2 Program
/// Files, 3 custom). A user whose own folders are not known gets them below Program Files.
Text BaseFolder(Recordset& versionTemplate, const std::optional<UserFolders>& user);

/// The folder of one version, with a trailing backslash: base\FrontendID\FrontendVersionID\, or the first of
/// its subfolders _1, _2, ... that has no files and is nobody else's, when an earlier deployment left files
/// behind or another user has the folder.
Text ChooseVersionFolder(LocalDatabase& database, const Text& base, const Text& frontendId,
                         const Text& frontendVersionId);

}  // namespace rvl
