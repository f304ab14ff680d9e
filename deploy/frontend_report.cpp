#include "deploy/frontend_report.h"

#include <optional>

#include "deploy/deployed_files.h"
#include "platform/files.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr const char* kShortcuts[] = {"DesktopIconPath", "MenuIconPath"};

Text FieldText(Recordset& row, TextView name) {
    return NullTo(row.Field(name), "");
}

bool IsTemplate(Recordset& version) {
    return IsNull(version.Field("Username"));
}

/// A staging file that is still being received is there, but not whole.
bool IsPresent(const Text& path, std::optional<std::int64_t> wholeSize) {
    return !wholeSize || FileLen(path) == *wholeSize;
}

bool IsThere(const Text& path, bool exists) {
    if (!exists) Log(path + " is missing, forgetting about deployed version");
    return exists;
}

Text MainFile(Recordset& version) {
    return LocationOf(version) + FieldText(version, "FrontendFilename");
}

bool HasMainParts(Recordset& version) {
    const Text folder = FieldText(version, "FrontendLocation");
    const Text main = MainFile(version);
    const bool folderThere = IsThere(folder, DirExists(folder));
    const bool mainThere = IsThere(main, FileExists(main));
    return folderThere && mainThere;
}

bool HasShortcuts(Recordset& version) {
    bool complete = true;
    for (const char* shortcut : kShortcuts) {
        const Value path = version.Field(shortcut);
        if (!IsNull(path) && !IsThere(TextOf(path), FileExists(TextOf(path)))) complete = false;
    }
    return complete;
}

/// A database that Access has open cannot be deleted; the files that it works with stay as well.
bool IsInUse(const Text& mainFile) {
    return FileExists(mainFile) && platform::DeleteFileAt(mainFile) != 0;
}

}  // namespace

void FrontendReport::SendCurrentFrontends() try {
    const auto version = m_database.OpenRecordset("SELECT * FROM DeployedFrontends;");
    m_server.SendToServer("", "CURRENT_FRONTENDS_BEGIN", {});
    for (; !version->IsEOF(); version->MoveNext())
        Examine(*version);
    m_server.SendToServer("", "CURRENT_FRONTENDS_END", {});
} catch (...) {
    HandleError("frmClientService.SendCurrentFrontends");
}

void FrontendReport::Examine(Recordset& version) {
    std::int64_t present = 0;
    try {
        present = CountPresentFiles(version);
    } catch (...) {  // this version cannot be told about; the server must still hear of the others
        return HandleError("frmClientService.SendCurrentFrontends");
    }
    if (IsTemplate(version)) return SendRecord(version, present);
    const bool hasMainParts = HasMainParts(version);
    if (!HasShortcuts(version)) return Forget(version);
    SendRecord(version, hasMainParts ? present : 0);
}

std::int64_t FrontendReport::CountPresentFiles(Recordset& version) {
    const auto file = m_database.OpenRecordset(
        "SELECT Filename, FileSize FROM DeployedFrontendFiles"
        " WHERE DeployedFrontendID = " +
        TextOf(version.Field("DeployedFrontendID")));
    const Text folder = LocationOf(version);
    const bool isTemplate = IsTemplate(version);
    std::int64_t present = 0;
    for (; !file->IsEOF(); file->MoveNext()) {
        const Text path = folder + FieldText(*file, "Filename");
        if (!FileExists(path))
            file->Delete();
        else if (IsPresent(path,
                           isTemplate ? std::optional(NullTo(file->Field("FileSize"), 0)) : std::nullopt))
            ++present;
    }
    return present;
}

void FrontendReport::SendRecord(Recordset& version, std::int64_t present) {
    m_server.SendToServer(
        "", "CURRENT_FRONTEND",
        {FieldText(version, "FrontendID"), FieldText(version, "FrontendVersionID"),
         FieldText(version, "Username"), FieldText(version, "FileCount"), NumberText(present)});
}

void FrontendReport::Forget(Recordset& version) {
    Log("Missing critical files for version #" + FieldText(version, "FrontendVersionID") + ", username \"" +
        NullTo(version.Field("Username"), "(None)") + "\"");
    for (const char* shortcut : kShortcuts)
        platform::DeleteFileAt(FieldText(version, shortcut));  // the other one; it may well be gone, too
    // Nothing leads to files and rows any more: the next deployment would only step aside for the files.
    if (IsInUse(MainFile(version)))
        m_database.ExecuteSQL("DELETE FROM DeployedFrontendFiles WHERE DeployedFrontendID = " +
                              TextOf(version.Field("DeployedFrontendID")));
    else
        RemoveDeployedFiles(m_database, version);
    version.Delete();
}

}  // namespace rvl
