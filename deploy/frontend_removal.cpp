#include "deploy/frontend_removal.h"

#include "deploy/deployed_files.h"
#include "deploy/user_folders.h"
#include "platform/files.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

/// The condition for the user's rows, or for the templates.
Text BelongsTo(const Text& username) {
    return username.empty() ? " Is Null" : " = " + QuoteSQLString(username);
}

/// The folders of a shortcut go with it up to, and without, the user's own desktop or Start menu. Where that
/// lies is not known for somebody whose helper never told: then no folder goes.
void RemoveShortcut(const Text& path, const Text& ownFolder) {
    if (path.empty() || !FileExists(path)) return;
    Log("Removing " + path);
    platform::DeleteFileAt(path);
    const Text folder = FolderOf(path);
    const bool inside = EqualsNoCase(TextView(folder).substr(0, ownFolder.size()), ownFolder);
    if (inside && !ownFolder.empty()) RemoveEmptyFolders(folder, ownFolder);
}

}  // namespace

void FrontendRemoval::RemoveAllFrontendVersions(std::int32_t frontendId, const Text& username,
                                                bool quiet) try {
    const auto versions = m_database.OpenRecordset(
        "SELECT FrontendVersionID FROM DeployedFrontends WHERE FrontendID = " + NumberText(frontendId) +
        " AND Username" + BelongsTo(username));
    for (; !versions->IsEOF(); versions->MoveNext())
        RemoveFrontendVersion(static_cast<std::int32_t>(NumberOf(versions->Field("FrontendVersionID"))),
                              username, quiet);
} catch (...) {
    HandleError("frmClientService.RemoveAllFrontendVersions");
}

void FrontendRemoval::RemoveFrontendVersion(std::int32_t frontendVersionId, const Text& username,
                                            bool quiet) try {
    const Text id = NumberText(frontendVersionId);
    const auto version =
        m_database.OpenRecordset("SELECT * FROM DeployedFrontends WHERE FrontendVersionID = " + id +
                                 " AND Username" + BelongsTo(username));
    const Text ofUser = username.empty() ? Text() : " for user " + username;
    if (version->IsEOF()) {
        if (!quiet) Log("Cannot find frontend version #" + id + ofUser + " to remove");
        return;
    }
    Log(username.empty() ? "Removing frontend version template #" + id
                         : "Removing frontend version #" + id + ofUser);
    Remove(*version, username);
} catch (...) {
    HandleError("frmClientService.RemoveFrontendVersion");
}

void FrontendRemoval::Remove(Recordset& version, const Text& username) {
    Log(NullTo(version.Field("FrontendName"), "") + " is installed to " +
        NullTo(version.Field("FrontendLocation"), ""));
    RemoveDeployedFiles(m_database, version);
    RemoveShortcuts(version, username);
    const auto frontendId = static_cast<std::int32_t>(NullTo(version.Field("FrontendID"), 0));
    version.Delete();
    m_audience.VersionRemoved(frontendId);
}

/// A template's shortcuts are names, not files.
void FrontendRemoval::RemoveShortcuts(Recordset& version, const Text& username) {
    if (username.empty()) return;
    const UserFolders folders = ReadUserFolders(m_database, username).value_or(UserFolders());
    RemoveShortcut(NullTo(version.Field("DesktopIconPath"), ""), folders.desktop);
    RemoveShortcut(NullTo(version.Field("MenuIconPath"), ""), folders.startMenu);
}

}  // namespace rvl
