#include "deploy/user_folders.h"

#include "util/path_text.h"

namespace rvl {

std::optional<UserFolders> ReadUserFolders(LocalDatabase& database, const Text& username) {
    const auto row =
        database.OpenRecordset("SELECT * FROM UserPaths WHERE FullUsername = " + QuoteSQLString(username));
    if (row->IsEOF()) return std::nullopt;
    const auto folder = [&](TextView field) { return WithTrailingBackslash(NullTo(row->Field(field), "")); };
    return UserFolders{folder("LocalSettingsAppDataPath"), folder("DesktopPath"), folder("StartMenuPath")};
}

}  // namespace rvl
