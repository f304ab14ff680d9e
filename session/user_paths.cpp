#include "session/user_paths.h"

namespace rvl {

void RecordUserPaths(LocalDatabase& database, const Text& username, const UserFolders& folders) {
    const auto row =
        database.OpenRecordset("SELECT * FROM UserPaths WHERE FullUsername = " + QuoteSQLString(username));
    if (row->IsEOF()) {
        row->AddNew();
        row->SetField("FullUsername", username);
    } else {
        row->Edit();
    }
    row->SetField("LocalSettingsAppDataPath", EmptyToNull(folders.localAppData));
    row->SetField("DesktopPath", EmptyToNull(folders.desktop));
    row->SetField("StartMenuPath", EmptyToNull(folders.startMenu));
    row->Update();
}

}  // namespace rvl
