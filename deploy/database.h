#pragma once

#include <chrono>
#include <memory>

#include "deploy/recordset.h"

namespace rvl {

/// An open database file, shared with other processes, for reading and writing. Every change is in the file
/// when the call that makes it returns; a file that somebody else holds is waited for. Failures raise an
/// Error with the source "Database" and the numbers of database_errors.h.
class Database {
 public:
    static constexpr std::chrono::milliseconds kPatience{5000};

    explicit Database(const Text& path, std::chrono::milliseconds patience = kPatience);

    /// The rows of the table that the text names, or of the query that it is.
    std::unique_ptr<Recordset> OpenRecordset(const Text& source);

    /// A statement that returns no rows; it may well change none.
    void ExecuteSQL(const Text& sql);

 private:
    std::shared_ptr<platform::SqliteConnection> m_connection;
};

}  // namespace rvl
