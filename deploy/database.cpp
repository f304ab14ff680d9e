#include "deploy/database.h"

#include "deploy/database_errors.h"
#include "deploy/sql_dialect.h"

namespace rvl {
namespace {

using platform::SqliteConnection;
using platform::SqliteError;

/// An empty file opens as an empty database, but it is none of ours.
bool HasTables(SqliteConnection& connection) {
    return connection.Prepare("SELECT 1 FROM sqlite_master WHERE type = 'table'").Step();
}

/// Write-ahead logging without a flush for every change: a killed process loses nothing, since the system
/// has all that it wrote; a power cut may cost the last moment, but never the file.
void SetJournal(SqliteConnection& connection) {
    connection.Execute("PRAGMA journal_mode = WAL");
    connection.Execute("PRAGMA synchronous = NORMAL");
}

/// The file can be written: when its journal cannot, it is the folder that refuses.
void OpenJournal(SqliteConnection& connection) {
    try {
        SetJournal(connection);
    } catch (const SqliteError& error) {
        if (error.Failure() != platform::SqliteFailure::Forbidden) throw;
        RaiseDatabaseError(kErrorCannotLock);
    }
}

/// The query of a source with the row key as its first column, where there is one to tell.
Text KeyedQuery(const Text& query, const Text& table) {
    constexpr TextView kSelect = "SELECT";
    return table.empty() ? query : Text(kSelect) + " rowid, " + query.substr(kSelect.size());
}

}  // namespace

Database::Database(const Text& path, std::chrono::milliseconds patience) try
    : m_connection(std::make_shared<SqliteConnection>(platform::SqliteFileName(path),
                                                      SqliteConnection::Missing::Fail, patience)) {
    if (m_connection->IsReadOnly()) RaiseDatabaseError(kErrorCannotOpen);
    if (!HasTables(*m_connection)) RaiseDatabaseError(kErrorUnrecognizedFormat);
    m_connection->WidenNoCase();
    OpenJournal(*m_connection);
} catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

std::unique_ptr<Recordset> Database::OpenRecordset(const Text& source) try {
    const Text name = SingleName(source);
    const Text sql = name.empty() ? source : "SELECT * FROM " + name;
    Text table = ShownTable(sql);
    auto query = m_connection->Prepare(KeyedQuery(TranslateSql(sql), table));
    if (query.ColumnCount() == 0) RaiseDatabaseError(kErrorInvalidOperation);
    return std::make_unique<Recordset>(RecordsetSource{m_connection, std::move(query), std::move(table)});
} catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

void Database::ExecuteSQL(const Text& sql) try {
    auto statement = m_connection->Prepare(TranslateSql(sql));
    if (statement.ColumnCount() > 0) RaiseDatabaseError(kErrorSelectExecuted);
    statement.Step();
} catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

}  // namespace rvl
