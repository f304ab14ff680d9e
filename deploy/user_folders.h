#pragma once

#include <optional>

#include "deploy/local_database.h"

namespace rvl {

/// A user's own folders, each with a trailing backslash, as the user's helper told them at its login. Empty
/// where the helper had none to tell.
struct UserFolders {
    Text localAppData;
    Text desktop;
    Text startMenu;
};

/// None when no helper of the user has logged in yet.
std::optional<UserFolders> ReadUserFolders(LocalDatabase& database, const Text& username);

}  // namespace rvl
