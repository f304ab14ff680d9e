#include "deploy/local_database.h"

#include "deploy/database_errors.h"
#include "deploy/ntfs_permissions.h"
#include "platform/files.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/error_text.h"
#include "util/handle_error.h"
#include "util/path_text.h"

namespace rvl {
namespace {

constexpr const char* kInitializeDatabase = "Globals.InitializeDatabase";

Text WithoutExtension(const Text& fileName) {
    return fileName.substr(0, fileName.rfind('.'));
}

/// A folder or file that may not be written gets the number whose explanation says what to do about it.
[[noreturn]] void RaiseFileError(std::int32_t code, const Text& description) {
    constexpr std::int32_t kAccessDenied = 5, kWriteProtected = 19;
    const bool refused = code == kAccessDenied || code == kWriteProtected;
    throw Error(refused ? kErrorCannotLock : code, kInitializeDatabase, description);
}

void CreateFolder(const Text& folder) {
    ErrorRecord problem;
    if (!CreateLongDirectory(folder, &problem)) RaiseFileError(problem.Number, problem.Description);
}

/// Users may create files in new folders of this place: one who put a journal beside the database would have
/// it played into it. A service that may not give the folder away could not use it afterwards.
void KeepForTheSystem(const Text& folder) {
    const Text system = LocalSystemUsername();
    if (SetOwner(folder, system) != 0) return;
    ReplacePermissions(folder, {system, AdministratorsGroupName()}, kFullAccess);
    AddPermission(folder, EveryoneGroupName(), kReadAndExecute);
}

/// Journals of a database that was deleted by hand would be played into the one that takes its place.
void DeleteJournals(const Text& path) {
    for (const char* suffix : {"-wal", "-shm", "-journal"})
        platform::DeleteFileAt(path + suffix);
}

/// The copy gets its name when it is complete: a start that is killed leaves no half database.
void CopyDatabase(const Text& source, const Text& destination) {
    const Text copy = destination + ".new";
    DeleteJournals(destination);
    int code = platform::CopyFileTo(source, copy);
    if (code == 0) code = platform::MoveFileTo(copy, destination);
    if (code == 0) return;
    platform::DeleteFileAt(copy);
    RaiseFileError(code,
                   GetErrorString(code) + " while copying \"" + source + "\" to \"" + destination + "\"");
}

}  // namespace

LocalDatabase::LocalDatabase(DatabaseSurroundings surroundings, std::function<void()> fatal)
    : m_surroundings(std::move(surroundings)), m_fatal(std::move(fatal)) {}

Text LocalDatabase::DatabasePath() const {
    const Text& executable = m_surroundings.executablePath;
    Text beside = FolderOf(executable) + WithoutExtension(FileNameOf(executable)) + ".mdb";
    if (FileExists(beside)) return beside;
    return WithTrailingBackslash(m_surroundings.commonAppDataPath) + "Ravelin\\Client\\RVLClient.mdb";
}

Text LocalDatabase::TemplateDatabasePath() const {
    const Text& executable = m_surroundings.executablePath;
    return FolderOf(executable) + WithoutExtension(FileNameOf(executable)) + "Template.mdb";
}

void LocalDatabase::CreateFromTemplate(const Text& path) const {
    const Text source = TemplateDatabasePath();
    if (!FileExists(source))
        throw Error(kErrorTemplateMissing, kInitializeDatabase, "Cannot find \"" + source + "\".");
    Log("Database does not exist, copying from template");
    CreateFolder(FolderOf(path));
    KeepForTheSystem(FolderOf(path));
    CopyDatabase(source, path);
}

void LocalDatabase::InitializeDatabase() {
    if (m_database) return;
    try {
        Open();
    } catch (...) {
        m_settings.reset();
        m_database.reset();
        HandleError(kInitializeDatabase);
        m_fatal();
    }
}

void LocalDatabase::Open() {
    m_settings.reset();
    const Text path = DatabasePath();
    Log("Database path: " + path);
    if (!FileExists(path)) CreateFromTemplate(path);
    Log("Opening the database");
    m_database = std::make_unique<Database>(path);
    OpenSettings();
    UpdateDatabaseFormat();
}

void LocalDatabase::OpenSettings() {
    Log("Opening settings table");
    m_settings = m_database->OpenRecordset("Settings");
    if (m_settings->IsEOF()) {
        m_settings->AddNew();
        m_settings->Update();
    }
    m_settings->MoveFirst();
}

void LocalDatabase::CloseDatabase() noexcept {
    if (!m_database) return;
    Log("Closing the database");
    m_settings.reset();
    m_database.reset();
}

/// Open, or an error: a fatal end that does not end the process leaves nothing to work with.
Database& LocalDatabase::Opened() {
    InitializeDatabase();
    if (!m_database) RaiseDatabaseError(kErrorObjectInvalid);
    return *m_database;
}

Recordset& LocalDatabase::Settings() {
    Opened();
    return *m_settings;
}

std::unique_ptr<Recordset> LocalDatabase::OpenRecordset(const Text& source) {
    return Opened().OpenRecordset(source);
}

void LocalDatabase::ExecuteSQL(const Text& sql) {
    Opened().ExecuteSQL(sql);
}

Value LocalDatabase::GetSettingValue(const Text& field) {
    Settings().Refresh();
    return Settings().Field(field);
}

void LocalDatabase::SetSettingValue(const Text& field, const Value& value) {
    Recordset& settings = Settings();
    try {
        settings.Edit();
        settings.SetField(field, value);
        settings.Update();
    } catch (...) {
        settings.CancelUpdate();  // what could not be stored must not be read back
        throw;
    }
}

std::int64_t LocalDatabase::GetDatabaseVersion() {
    return NullTo(GetSettingValue("DatabaseVersion"), std::int64_t{1});
}

void LocalDatabase::UpdateDatabaseFormat() try {
    Log("Checking database format");
    if (GetDatabaseVersion() != 1)
        throw Error(kErrorUnknownDatabaseVersion, "GlobalsClient.UpdateDatabaseFormat",
                    "Unknown database version");
} catch (...) {
    HandleErrorAndReRaise("GlobalsClient.UpdateDatabaseFormat");
}

}  // namespace rvl
