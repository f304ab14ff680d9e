#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <initializer_list>
#include <memory>
#include <string>
#include <variant>

#include "platform/text.h"

struct sqlite3;
struct sqlite3_stmt;

namespace rvl::platform {

/// What SQLite refused, as far as somebody can act on it.
enum class SqliteFailure {
    Locked,     ///< another process holds the file
    Forbidden,  ///< it cannot be opened, or not for writing
    Damaged,    ///< not a database, or a broken one
    DiskFull,
    InputOutput,
    Constraint,
    WrongType,  ///< the value does not fit the column
    OutOfMemory,
    Statement,  ///< the statement itself: syntax, unknown names, misuse
};

class SqliteError : public std::exception {
 public:
    SqliteError(int extendedCode, Text message)
        : m_extendedCode(extendedCode), m_message(std::move(message)) {}

    SqliteFailure Failure() const;
    const char* what() const noexcept override { return m_message.c_str(); }

 private:
    int m_extendedCode;
    Text m_message;
};

/// What a column or a parameter holds: Null, a number or a text.
using SqliteValue = std::variant<std::monostate, std::int64_t, Text>;

/// A prepared statement. It may outlive its connection, which then stays open underneath.
class SqliteStatement {
 public:
    void Bind(int parameter, const SqliteValue& value);  ///< the first is 1
    bool Step();                                         ///< false when there is no further row
    int ColumnCount() const;                             ///< 0 for a statement that returns no rows
    Text ColumnName(int column) const;                   ///< the first is 0
    SqliteValue Column(int column) const;

 private:
    friend class SqliteConnection;
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    explicit SqliteStatement(sqlite3_stmt* statement) : m_statement(statement) {}
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// An open database file. Every failure raises SqliteError.
class SqliteConnection {
 public:
    enum class Missing { Fail, Create };

    /// The file name is what SqliteFileName gives. A file that another process holds is waited for up to
    /// `patience`, at every statement.
    SqliteConnection(const std::string& fileName, Missing missing, std::chrono::milliseconds patience);

    /// One statement with the values of its parameters. Anything behind it is refused, not ignored.
    SqliteStatement Prepare(TextView sql, std::initializer_list<SqliteValue> values = {});
    void Execute(TextView sql, std::initializer_list<SqliteValue> values = {});
    void ExecuteScript(TextView sql);  ///< any number of statements

    std::int64_t LastInsertedRow() const;
    std::int64_t ChangedRows() const;  ///< by the last INSERT, UPDATE or DELETE
    bool IsReadOnly() const;

    /// Lets the collation NOCASE know all letters of a Text instead of ASCII only. An index that uses
    /// NOCASE would then be in another order than other programs believe: there must be none.
    void WidenNoCase();

 private:
    struct Close {
        void operator()(sqlite3* connection) const;
    };
    void Check(int code) const;
    std::unique_ptr<sqlite3, Close> m_connection;
};

/// A transaction that is undone unless it was committed. The one that writes takes the write lock at its
/// beginning, so that it is waited for there and never fails half-way for another writer.
class SqliteTransaction {
 public:
    enum class Intent { Read, Write };

    SqliteTransaction(SqliteConnection& connection, Intent intent);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;

    void Commit();

 private:
    SqliteConnection& m_connection;
    bool m_open = true;
};

/// What SQLite opens for a path of the system; empty when the path leads nowhere on this system.
std::string SqliteFileName(const Text& path);

}  // namespace rvl::platform
