#pragma once

#include <functional>
#include <memory>

#include "deploy/database.h"
#include "deploy/database_texts.h"
#include "deploy/explain_database_error.h"
#include "runtime/terminate.h"

namespace rvl {

/// What the place of the database depends on.
struct DatabaseSurroundings {
    Text executablePath;
    Text commonAppDataPath;
};

/// The workstation's own database: front ends, deployments, users' folders, settings. It is opened at the
/// first use, created from the template beside the executable when there is none yet, and stays open.
///
/// A database that cannot be opened is reported and ends the process (`fatal`). Errors of statements pass to
/// the caller.
class LocalDatabase {
 public:
    explicit LocalDatabase(
        DatabaseSurroundings surroundings, std::function<void()> fatal = [] { Terminate(kExitFatal); });

    void InitializeDatabase();  ///< nothing when it is open
    void CloseDatabase() noexcept;

    std::unique_ptr<Recordset> OpenRecordset(const Text& source);
    void ExecuteSQL(const Text& sql);

    Value GetSettingValue(const Text& field);
    void SetSettingValue(const Text& field, const Value& value);  ///< stored when it returns

    std::int64_t GetDatabaseVersion();
    void UpdateDatabaseFormat();  ///< raises an error for any version but 1

    Text DatabasePath() const;
    Text TemplateDatabasePath() const;

 private:
    void Open();
    void CreateFromTemplate(const Text& path) const;
    void OpenSettings();
    Database& Opened();
    Recordset& Settings();

    DatabaseSurroundings m_surroundings;
    std::function<void()> m_fatal;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<Recordset> m_settings;  // on its only row
};

}  // namespace rvl
