#pragma once

#include "deploy/local_database.h"
#include "deploy/user_folders.h"

namespace rvl {

/// Keeps a user's folders for the deployments to come; an empty one is kept as Null.
void RecordUserPaths(LocalDatabase& database, const Text& username, const UserFolders& folders);

}  // namespace rvl
