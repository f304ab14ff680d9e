#include "platform/sqlite.h"

#include <sqlite3.h>

#include <string_view>
#include <utility>

#include "platform/error.h"
#include "platform/latin1_case.h"

namespace rvl::platform {
namespace {

/// A message may quote a statement, and cut it inside a character.
Text MessageText(const char* utf8) {
    try {
        return TextFromUtf8(utf8);
    } catch (const Error&) {
        return utf8;
    }
}

[[noreturn]] void Raise(sqlite3* connection, int code) {
    if (connection == nullptr) throw SqliteError(code, sqlite3_errstr(code));
    throw SqliteError(sqlite3_extended_errcode(connection), MessageText(sqlite3_errmsg(connection)));
}

/// A byte of UTF-8 in lower case. All letters of a Text above ASCII are led by C3, 40 below their code.
int LowerByte(std::string_view utf8, std::size_t index) {
    const int shift = index > 0 && static_cast<unsigned char>(utf8[index - 1]) == 0xC3 ? 0x40 : 0;
    const auto code = static_cast<unsigned char>(utf8[index]);
    return static_cast<unsigned char>(LowerLatin1(static_cast<char>(code + shift))) - shift;
}

/// SQLite calls it: no exceptions, an order for malformed UTF-8 as well.
int CompareWithoutCase(void*, int leftSize, const void* leftData, int rightSize, const void* rightData) {
    const std::string_view left(static_cast<const char*>(leftData), static_cast<std::size_t>(leftSize));
    const std::string_view right(static_cast<const char*>(rightData), static_cast<std::size_t>(rightSize));
    for (std::size_t index = 0; index < left.size() && index < right.size(); ++index)
        if (const int difference = LowerByte(left, index) - LowerByte(right, index)) return difference;
    return leftSize - rightSize;
}

bool IsOnlySeparators(std::string_view sql) {
    return sql.find_first_not_of(" \t\r\n;") == sql.npos;
}

}  // namespace

SqliteFailure SqliteError::Failure() const {
    if (m_extendedCode == SQLITE_CONSTRAINT_DATATYPE) return SqliteFailure::WrongType;
    switch (m_extendedCode & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return SqliteFailure::Locked;
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_READONLY:
        case SQLITE_AUTH:
            return SqliteFailure::Forbidden;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return SqliteFailure::Damaged;
        case SQLITE_FULL:
            return SqliteFailure::DiskFull;
        case SQLITE_IOERR:
            return SqliteFailure::InputOutput;
        case SQLITE_CONSTRAINT:
            return SqliteFailure::Constraint;
        case SQLITE_NOMEM:
            return SqliteFailure::OutOfMemory;
        case SQLITE_MISMATCH:
            return SqliteFailure::WrongType;
        default:
            return SqliteFailure::Statement;
    }
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void SqliteStatement::Bind(int parameter, const SqliteValue& value) {
    int code = SQLITE_OK;
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        code = sqlite3_bind_int64(m_statement.get(), parameter, *number);
    } else if (const auto* text = std::get_if<Text>(&value)) {
        const std::string utf8 = Utf8FromText(*text);
        code = sqlite3_bind_text64(m_statement.get(), parameter, utf8.data(), utf8.size(), SQLITE_TRANSIENT,
                                   SQLITE_UTF8);
    } else {
        code = sqlite3_bind_null(m_statement.get(), parameter);
    }
    if (code != SQLITE_OK) Raise(sqlite3_db_handle(m_statement.get()), code);
}

bool SqliteStatement::Step() {
    const int code = sqlite3_step(m_statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) Raise(sqlite3_db_handle(m_statement.get()), code);
    return code == SQLITE_ROW;
}

int SqliteStatement::ColumnCount() const {
    return sqlite3_column_count(m_statement.get());
}

Text SqliteStatement::ColumnName(int column) const {
    const char* name = sqlite3_column_name(m_statement.get(), column);
    if (name == nullptr) throw SqliteError(SQLITE_NOMEM, sqlite3_errstr(SQLITE_NOMEM));
    return TextFromUtf8(name);
}

SqliteValue SqliteStatement::Column(int column) const {
    sqlite3_stmt* statement = m_statement.get();
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL:
            return std::monostate();
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return sqlite3_column_int64(statement, column);
        default:
            break;
    }
    const auto* utf8 = static_cast<const char*>(sqlite3_column_blob(statement, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    return utf8 == nullptr ? Text() : TextFromUtf8({utf8, size});
}

void SqliteConnection::Close::operator()(sqlite3* connection) const {
    sqlite3_close_v2(connection);
}

SqliteConnection::SqliteConnection(const std::string& fileName, Missing missing,
                                   std::chrono::milliseconds patience) {
    // An empty name would open a temporary database.
    if (fileName.empty()) Raise(nullptr, SQLITE_CANTOPEN);
    sqlite3* connection = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (missing == Missing::Create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(fileName.c_str(), &connection, flags, nullptr);
    m_connection.reset(connection);
    Check(code);
    Check(sqlite3_extended_result_codes(connection, 1));
    Check(sqlite3_busy_timeout(connection, static_cast<int>(patience.count())));
}

void SqliteConnection::Check(int code) const {
    if (code != SQLITE_OK) Raise(m_connection.get(), code);
}

SqliteStatement SqliteConnection::Prepare(TextView sql, std::initializer_list<SqliteValue> values) {
    const std::string utf8 = Utf8FromText(sql);
    sqlite3_stmt* handle = nullptr;
    const char* tail = nullptr;
    Check(sqlite3_prepare_v2(m_connection.get(), utf8.c_str(), static_cast<int>(utf8.size() + 1), &handle,
                             &tail));
    SqliteStatement statement(handle);
    if (handle == nullptr) throw SqliteError(SQLITE_ERROR, "the statement is empty");
    if (!IsOnlySeparators({tail, utf8.c_str() + utf8.size()}))
        throw SqliteError(SQLITE_ERROR, "characters found after the end of the statement");
    int parameter = 0;
    for (const SqliteValue& value : values)
        statement.Bind(++parameter, value);
    return statement;
}

void SqliteConnection::Execute(TextView sql, std::initializer_list<SqliteValue> values) {
    SqliteStatement statement = Prepare(sql, values);
    while (statement.Step()) {
    }
}

void SqliteConnection::ExecuteScript(TextView sql) {
    Check(sqlite3_exec(m_connection.get(), Utf8FromText(sql).c_str(), nullptr, nullptr, nullptr));
}

std::int64_t SqliteConnection::LastInsertedRow() const {
    return sqlite3_last_insert_rowid(m_connection.get());
}

std::int64_t SqliteConnection::ChangedRows() const {
    return sqlite3_changes(m_connection.get());
}

bool SqliteConnection::IsReadOnly() const {
    return sqlite3_db_readonly(m_connection.get(), "main") != 0;
}

void SqliteConnection::WidenNoCase() {
    Check(sqlite3_create_collation(m_connection.get(), "NOCASE", SQLITE_UTF8, nullptr, CompareWithoutCase));
}

SqliteTransaction::SqliteTransaction(SqliteConnection& connection, Intent intent) : m_connection(connection) {
    connection.Execute(intent == Intent::Write ? "BEGIN IMMEDIATE" : "BEGIN");
}

SqliteTransaction::~SqliteTransaction() {
    if (!m_open) return;
    try {
        m_connection.Execute("ROLLBACK");
    } catch (const std::exception&) {
        // Some failures have already rolled it back.
    }
}

void SqliteTransaction::Commit() {
    m_connection.Execute("COMMIT");
    m_open = false;
}

}  // namespace rvl::platform
