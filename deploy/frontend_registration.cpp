#include "deploy/frontend_registration.h"

#include "deploy/deployed_files.h"
#include "deploy/version_file_name.h"
#include "runtime/file_digest.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {

void FrontendRegistration::Refuse(const Text& problem) {
    m_server.SendToServer("", "GENERAL_ERROR", {"87", problem});
}

bool FrontendRegistration::IsAcceptable(const Text& filename) {
    if (StaysInFolder(filename)) return true;
    const Text problem = "Name leads out of its folder: \"" + filename + "\"";
    Log(problem);
    Refuse(problem);
    return false;
}

void FrontendRegistration::AddFrontendVersion(const FrontendVersion& version) try {
    for (const Text& name :
         {version.FrontendFilename, version.IconFile, version.DesktopIconPath, version.MenuIconPath})
        if (!IsAcceptable(name)) return;
    const Text templateRow =
        " WHERE FrontendVersionID = " + NumberText(version.FrontendVersionID) + " AND Username Is Null";
    // Nothing would lead to these any more.
    m_database.ExecuteSQL(
        "DELETE FROM DeployedFrontendFiles WHERE DeployedFrontendID IN"
        " (SELECT DeployedFrontendID FROM DeployedFrontends" +
        templateRow + ")");
    m_database.ExecuteSQL("DELETE FROM DeployedFrontends" + templateRow);
    StoreTemplate(version);
} catch (...) {
    HandleError("frmClientService.AddFrontendVersion");
}

void FrontendRegistration::StoreTemplate(const FrontendVersion& version) {
    const auto row = m_database.OpenRecordset("SELECT * FROM DeployedFrontends");
    row->AddNew();
    row->SetField("FrontendID", version.FrontendID);
    row->SetField("FrontendVersionID", version.FrontendVersionID);
    row->SetField("FrontendName", version.FrontendName);
    row->SetField("FrontendLocation", version.FrontendLocation);
    row->SetField("FrontendFilename", version.FrontendFilename);
    row->SetField("AllowedAccessVersions", EmptyToNull(version.AllowedAccessVersions.ToString(",")));
    row->SetField("MDWPath", EmptyToNull(version.MDWPath));
    row->SetField("FriendlyVersionNumber", version.FriendlyVersionNumber);
    row->SetField("IconFile", EmptyToNull(version.IconFile));
    row->SetField("DesktopIconPath", EmptyToNull(version.DesktopIconPath));
    row->SetField("MenuIconPath", EmptyToNull(version.MenuIconPath));
    row->SetField("DestinationLocation", version.DestinationLocation);
    row->SetField("CustomDestinationLocation", EmptyToNull(version.CustomDestinationLocation));
    row->SetField("FileCount", version.FileCount);
    row->Update();
}

void FrontendRegistration::AddFrontendVersionFile(std::int32_t frontendVersionId, const Text& filename) try {
    if (!IsAcceptable(filename)) return;
    const Text id = NumberText(frontendVersionId);
    const auto version = m_database.OpenRecordset(
        "SELECT * FROM DeployedFrontends WHERE FrontendVersionID = " + id + " AND Username Is Null");
    if (version->IsEOF()) return Refuse("Unable to locate frontend version #" + id);
    const std::int64_t deployedFrontendId = NumberOf(version->Field("DeployedFrontendID"));
    m_database.ExecuteSQL("DELETE FROM DeployedFrontendFiles WHERE DeployedFrontendID = " +
                          NumberText(deployedFrontendId) + " AND Filename = " + QuoteSQLString(filename));
    const Text path = LocationOf(*version) + filename;
    if (FileExists(path))
        StoreFile(deployedFrontendId, filename, path);
    else
        Refuse("Unable to locate file \"" + path + "\"");
} catch (...) {
    HandleError("frmClientService.AddFrontendVersionFile");
}

void FrontendRegistration::StoreFile(std::int64_t deployedFrontendId, const Text& filename,
                                     const Text& path) {
    const auto row = m_database.OpenRecordset("SELECT * FROM DeployedFrontendFiles");
    row->AddNew();
    row->SetField("DeployedFrontendID", deployedFrontendId);
    row->SetField("Filename", filename);
    row->SetField("FileSize", FileLen(path));
    row->SetField("MD5Hash", MD5SumOfFile(path));
    row->Update();
}

}  // namespace rvl
