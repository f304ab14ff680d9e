#include "session/frontend_start.h"

#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "session/access_installations.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

Text NotDistributed(int code) {
    return "The frontend has not yet been distributed to this workstation (code " + NumberText(code) + ").";
}

void LogMissing(const Text& path) {
    Log("\"" + path + "\" does not exist");
}

/// Empty when every recorded file of the deployment is there.
Text FindMissingFile(LocalDatabase& database, const Text& deployedFrontendId, const Text& folder) {
    const auto file = database.OpenRecordset(
        "SELECT * FROM DeployedFrontendFiles WHERE DeployedFrontendID = " + deployedFrontendId);
    if (file->IsEOF()) {
        Log("No deployed files for the frontend");
        return NotDistributed(2);
    }
    for (; !file->IsEOF(); file->MoveNext()) {
        const Text path = folder + NullTo(file->Field("Filename"), "");
        if (FileExists(path)) continue;
        LogMissing(path);
        return NotDistributed(3);
    }
    return "";
}

Text FindAccess(const Text& databasePath, const Text& allowedVersions, Text& accessPath) {
    LongVector allowed = StringToLongVector(allowedVersions, ",");
    allowed.Sort();
    LongVector installed = InstalledAccessVersions();
    installed.Sort();
    if (installed.Count() == 0) return "Microsoft Access is not installed.";
    accessPath = GetBestAccessPath(databasePath, allowed, installed);
    if (accessPath.empty()) return "The required version of Microsoft Access is not installed.";
    return FileExists(accessPath) ? "" : "Cannot find Microsoft Access.";
}

}  // namespace

StartDecision DecideStart(LocalDatabase& database, const Text& username, std::int32_t frontendId) {
    const Text id = NumberText(frontendId);
    const auto row = database.OpenRecordset("SELECT TOP 1 * FROM DeployedFrontends WHERE FrontendID = " + id +
                                            " AND Username = " + QuoteSQLString(username) +
                                            " ORDER BY FrontendVersionID DESC");
    if (row->IsEOF()) {
        Log("Cannot locate frontend record for user " + username);
        return {"The frontend #" + id + " is not presently available.", {}};
    }
    const auto field = [&](TextView name) { return NullTo(row->Field(name), ""); };
    const Text location = WithTrailingBackslash(field("FrontendLocation"));
    const Text folder = location.empty() ? "\\" : location;
    const Text path = folder + field("FrontendFilename");
    if (!FileExists(path)) {
        LogMissing(path);
        return {NotDistributed(1), {}};
    }
    Text problem = FindMissingFile(database, field("DeployedFrontendID"), folder);
    Text accessPath;
    if (problem.empty()) problem = FindAccess(path, field("AllowedAccessVersions"), accessPath);
    if (!problem.empty()) return {problem, {}};
    return {
        "",
        {id, field("FrontendVersionID"), field("FrontendName"), accessPath, path, field("MDWPath"), "", ""}};
}

}  // namespace rvl
