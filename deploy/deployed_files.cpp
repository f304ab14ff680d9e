#include "deploy/deployed_files.h"

#include "platform/files.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/path_text.h"

namespace rvl {
namespace {

void RemoveFile(const Text& path, const Text& location) {
    Log("Removing " + path);
    platform::DeleteFileAt(path);
    try {
        PruneEmptyDirectories(FolderOf(path), location);
    } catch (...) {  // a recorded name that leads elsewhere: that folder is not ours
        Log("    " + CurrentError().Description);
    }
}

void RemoveIfThere(const Text& name, const Text& location) {
    if (!name.empty() && FileExists(location + name)) RemoveFile(location + name, location);
}

/// A deployment that was killed in the middle of a copy has no row for what it left.
void RemoveUnrecordedCopies(LocalDatabase& database, Recordset& version, const Text& location) {
    if (IsNull(version.Field("Username"))) return;
    const auto file = database.OpenRecordset(
        "SELECT Filename FROM DeployedFrontendFiles WHERE DeployedFrontendID IN"
        " (SELECT DeployedFrontendID FROM DeployedFrontends WHERE Username Is Null AND FrontendVersionID = " +
        TextOf(version.Field("FrontendVersionID")) + ")");
    for (; !file->IsEOF(); file->MoveNext())
        RemoveIfThere(NullTo(file->Field("Filename"), ""), location);
}

}  // namespace

/// Without a location the root of drive C:, never whatever folder the service happens to run in.
Text LocationOf(Recordset& version) {
    const Text location = NullTo(version.Field("FrontendLocation"), "");
    return location.empty() ? Text("\\") : WithTrailingBackslash(location);
}

void RemoveDeployedFiles(LocalDatabase& database, Recordset& version) {
    const Text location = LocationOf(version);
    const auto file =
        database.OpenRecordset("SELECT * FROM DeployedFrontendFiles WHERE DeployedFrontendID = " +
                               TextOf(version.Field("DeployedFrontendID")));
    for (; !file->IsEOF(); file->MoveNext()) {
        RemoveFile(location + NullTo(file->Field("Filename"), ""), location);
        file->Delete();
    }
    RemoveUnrecordedCopies(database, version, location);
    RemoveIfThere(NullTo(version.Field("FrontendFilename"), ""), location);
    RemoveIfThere(NullTo(version.Field("IconFile"), ""), location);  // it comes with any deployment
}

}  // namespace rvl
