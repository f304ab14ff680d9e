#include "deploy/frontend_deployment.h"

#include "deploy/deployed_files.h"
#include "deploy/frontend_shortcut.h"
#include "deploy/user_file_permissions.h"
#include "deploy/version_folder.h"
#include "platform/files.h"
#include "runtime/file_digest.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

Text Quoted(const Text& path) {
    return "\"" + path + "\"";
}

/// The path of a shortcut that the version names. Without the user's own folder there is no sensible place:
/// none is made, and the deployment that follows the helper's login makes it.
Text ShortcutPath(const Text& folder, const Text& name) {
    if (name.empty()) return "";
    if (!folder.empty()) return folder + name + ".lnk";
    Log("The user's folders are not known yet, no shortcut \"" + name + "\" is created");
    return "";
}

}  // namespace

void FrontendDeployment::FrontendVersionDeploy(std::int32_t frontendVersionId, const Text& username,
                                               bool copyFiles) try {
    const Text id = NumberText(frontendVersionId);
    const auto version = m_database.OpenRecordset(
        "SELECT * FROM DeployedFrontends WHERE FrontendVersionID = " + id + " AND Username Is Null");
    if (version->IsEOF()) return Refuse("Unable to locate template frontend version #" + id);
    // Rows without a user are the templates: removing the earlier ones would remove what is to be deployed.
    if (username.empty()) return Refuse("No user to deploy frontend version #" + id + " to");
    const auto frontendId = static_cast<std::int32_t>(NumberOf(version->Field("FrontendID")));
    m_removal.RemoveAllFrontendVersions(frontendId, username, true);
    Plan plan = MakePlan(*version, username);
    plan.deployedFrontendId = RecordDeployment(plan);
    CopyIcon(plan);
    if (copyFiles)
        CopyFiles(plan);
    else
        Log("Not copying files for this deployment");
    CreateShortcuts(plan);
    m_audience.VersionDeployed(frontendVersionId);
} catch (...) {
    HandleError("frmClientService.FrontendVersionDeploy");
}

void FrontendDeployment::Refuse(const Text& problem) {
    m_server.SendToServer("", "GENERAL_ERROR", {"87", problem});
}

// Plan

Text FrontendDeployment::Plan::IconPath() const {
    const Text icon = Field("IconFile");
    return icon.empty() ? Text() : versionFolder + icon;
}

FrontendDeployment::Plan FrontendDeployment::MakePlan(Recordset& version, const Text& username) {
    const auto user = ReadUserFolders(m_database, username);
    const UserFolders folders = user.value_or(UserFolders());
    Plan plan{.version = version, .username = username};
    plan.sourceFolder = LocationOf(version);
    plan.versionFolder = ChooseVersionFolder(m_database, BaseFolder(version, user), plan.Field("FrontendID"),
                                             plan.Field("FrontendVersionID"));
    plan.desktopShortcut = ShortcutPath(folders.desktop, plan.Field("DesktopIconPath"));
    plan.menuShortcut = ShortcutPath(folders.startMenu, plan.Field("MenuIconPath"));
    return plan;
}

std::int64_t FrontendDeployment::RecordDeployment(const Plan& plan) {
    const auto row = m_database.OpenRecordset("SELECT * FROM DeployedFrontends");
    row->AddNew();
    for (const char* field : {"FrontendID", "FrontendVersionID", "FrontendName", "FrontendFilename",
                              "AllowedAccessVersions", "MDWPath", "FriendlyVersionNumber", "IconFile",
                              "DestinationLocation", "CustomDestinationLocation", "FileCount"})
        row->SetField(field, plan.version.Field(field));
    row->SetField("Username", plan.username);
    row->SetField("FrontendLocation", plan.versionFolder);
    row->SetField("DesktopIconPath", EmptyToNull(plan.desktopShortcut));
    row->SetField("MenuIconPath", EmptyToNull(plan.menuShortcut));
    row->Update();
    return row->LastAppendedKey();
}

// Files

void FrontendDeployment::CopyIcon(const Plan& plan) {
    const Text destination = plan.IconPath();
    if (destination.empty()) return;
    const Text source = plan.sourceFolder + plan.Field("IconFile");
    if (!FileExists(source)) return;
    CreateLongDirectory(FolderOf(destination));
    if (platform::CopyFileTo(source, destination) != 0)
        Log("Unable to copy " + Quoted(source) + " to " + Quoted(destination) + ".");
}

void FrontendDeployment::CopyFiles(Plan& plan) {
    const auto file = m_database.OpenRecordset(
        "SELECT * FROM DeployedFrontendFiles WHERE DeployedFrontendID = " + plan.Field("DeployedFrontendID"));
    const auto target = m_database.OpenRecordset("SELECT * FROM DeployedFrontendFiles");
    for (; !file->IsEOF(); file->MoveNext())
        CopyFile(plan, *target, NullTo(file->Field("Filename"), ""));
}

void FrontendDeployment::CopyFile(Plan& plan, Recordset& target, const Text& filename) {
    const Text source = plan.sourceFolder + filename;
    const Text destination = plan.versionFolder + filename;
    Log("Copying " + Quoted(source) + " to " + Quoted(destination));
    const Text folder = FolderOf(destination);
    if (plan.preparedFolders.insert(folder).second) {
        CreateLongDirectory(folder);
        SetUserFilePerms(plan.username, folder);
    }
    // After a failure there is nothing to record, unless an older file is in its place.
    if (!CopyOrComplain(source, destination) && !FileExists(destination)) return;
    target.AddNew();
    target.SetField("DeployedFrontendID", plan.deployedFrontendId);
    target.SetField("Filename", filename);
    target.SetField("FileSize", FileLen(destination));
    target.SetField("MD5Hash", MD5SumOfFile(destination));
    target.Update();
    SetUserFilePerms(plan.username, destination);
}

bool FrontendDeployment::CopyOrComplain(const Text& source, const Text& destination) {
    const int code = platform::CopyFileTo(source, destination);
    if (code != 0)
        m_server.SendToServer(
            "", "GENERAL_ERROR",
            {NumberText(code),
             GetErrorString(code) + " while copying " + Quoted(source) + " to " + Quoted(destination),
             "FRONTEND_DEPLOY"});
    return code == 0;
}

// Shortcuts

void FrontendDeployment::CreateShortcuts(const Plan& plan) {
    FrontendShortcut shortcut(plan.Field("FrontendID"), plan.Field("FrontendName"), plan.IconPath());
    for (const Text& path : {plan.desktopShortcut, plan.menuShortcut}) {
        if (path.empty()) continue;
        Log("Creating " + Quoted(path));
        CreateLongDirectory(FolderOf(path));
        shortcut.Save(path);
        SetUserFilePerms(plan.username, path);
    }
}

}  // namespace rvl
