#include "deploy/recordset.h"

#include <algorithm>
#include <utility>

#include "deploy/database_errors.h"
#include "deploy/sql_dialect.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

using platform::SqliteError;

/// A name of the schema, quoted for SQL.
Text Quoted(const Text& name) {
    Text quoted = "\"";
    for (const char character : name)
        quoted.append(character == '"' ? 2 : 1, character);
    return quoted + "\"";
}

}  // namespace

Recordset::Recordset(RecordsetSource source)
    : m_connection(std::move(source.connection)),
      m_query(std::move(source.query)),
      m_table(std::move(source.table)) {
    for (int column = m_table.empty() ? 0 : 1; column < m_query->ColumnCount(); ++column)
        m_columns.push_back(m_query->ColumnName(column));
}

std::shared_ptr<platform::SqliteConnection> Recordset::Connection() const {
    auto connection = m_connection.lock();
    if (!connection) RaiseDatabaseError(kErrorObjectInvalid);
    return connection;
}

std::shared_ptr<platform::SqliteConnection> Recordset::WritableConnection() const {
    if (m_table.empty()) RaiseDatabaseError(kErrorReadOnly);
    return Connection();
}

Recordset::Row Recordset::ReadRow(platform::SqliteStatement& query) const {
    const int first = m_table.empty() ? 0 : 1;
    Row row;
    if (first == 1) row.key = NumberOf(query.Column(0));
    row.values.reserve(m_columns.size());
    for (std::size_t column = 0; column < m_columns.size(); ++column)
        row.values.push_back(query.Column(first + static_cast<int>(column)));
    return row;
}

/// All at once: an open query would keep the file from being tidied up, and would see rows that follow it.
void Recordset::ReadRows() try {
    const auto connection = Connection();
    if (!m_query) return;
    std::vector<Row> rows;
    while (m_query->Step())
        rows.push_back(ReadRow(*m_query));
    m_query.reset();
    m_rows = std::move(rows);
    m_end = m_rows.size();
} catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

bool Recordset::IsEOF() {
    ReadRows();
    return m_position == m_end;
}

void Recordset::SkipDeletedRows() {
    while (m_position < m_end && m_rows[m_position].deleted)
        ++m_position;
}

void Recordset::MoveFirst() {
    ReadRows();
    m_editing = Editing::None;
    m_end = m_rows.size();
    m_position = 0;
    SkipDeletedRows();
    if (IsEOF()) RaiseDatabaseError(kErrorNoCurrentRecord);
}

void Recordset::MoveNext() {
    if (IsEOF()) RaiseDatabaseError(kErrorNoCurrentRecord);
    m_editing = Editing::None;
    ++m_position;
    SkipDeletedRows();
}

bool Recordset::FindFirst(const Text& criterion) try {
    ReadRows();
    m_editing = Editing::None;
    if (m_table.empty()) RaiseDatabaseError(kErrorNotSupported);
    auto query = Connection()->Prepare("SELECT rowid FROM " + m_table + " WHERE " + TranslateSql(criterion));
    std::vector<std::int64_t> keys;
    while (query.Step())
        keys.push_back(NumberOf(query.Column(0)));
    std::sort(keys.begin(), keys.end());
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& row) {
        return !row.deleted && std::binary_search(keys.begin(), keys.end(), row.key);
    });
    m_end = m_rows.size();
    m_position = static_cast<std::size_t>(found - m_rows.begin());
    return found != m_rows.end();
} catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

Recordset::Row& Recordset::CurrentRow() {
    if (IsEOF()) RaiseDatabaseError(kErrorNoCurrentRecord);
    if (m_rows[m_position].deleted) RaiseDatabaseError(kErrorRecordDeleted);
    return m_rows[m_position];
}

void Recordset::Begin(Editing editing, std::vector<Value> values) {
    m_draft = std::move(values);
    m_changed.assign(m_columns.size(), false);
    m_editing = editing;
}

void Recordset::AddNew() {
    WritableConnection();
    Begin(Editing::Adding, std::vector<Value>(m_columns.size()));
}

void Recordset::Edit() {
    WritableConnection();
    Begin(Editing::Changing, CurrentRow().values);
}

void Recordset::Update() try {
    if (m_editing == Editing::None) RaiseDatabaseError(kErrorUpdateWithoutEdit);
    if (m_editing == Editing::Adding)
        AppendRow();
    else
        StoreChanges();
    m_editing = Editing::None;
} catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

std::vector<std::size_t> Recordset::ChangedColumns() const {
    std::vector<std::size_t> columns;
    for (std::size_t column = 0; column < m_changed.size(); ++column)
        if (m_changed[column]) columns.push_back(column);
    return columns;
}

void Recordset::BindChanges(platform::SqliteStatement& statement) const {
    int parameter = 0;
    for (const std::size_t column : ChangedColumns())
        statement.Bind(++parameter, m_draft[column]);
}

void Recordset::AppendRow() {
    Text names, parameters;
    for (const std::size_t column : ChangedColumns()) {
        names += (names.empty() ? "" : ", ") + Quoted(m_columns[column]);
        parameters += parameters.empty() ? "?" : ", ?";
    }
    const Text content = names.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + parameters + ")";
    const auto connection = WritableConnection();
    auto statement = connection->Prepare("INSERT INTO " + m_table + content);
    BindChanges(statement);
    statement.Step();
    m_lastAppendedKey = connection->LastInsertedRow();
    if (m_query) return;  // the rows will be read with this one among them
    Row row{m_lastAppendedKey, {}, false};
    RereadRow(row);
    m_rows.push_back(std::move(row));
}

void Recordset::StoreChanges() {
    Row& row = CurrentRow();
    Text assignments;
    for (const std::size_t column : ChangedColumns())
        assignments += (assignments.empty() ? "" : ", ") + Quoted(m_columns[column]) + " = ?";
    if (assignments.empty()) return;
    const auto connection = WritableConnection();
    auto statement = connection->Prepare("UPDATE " + m_table + " SET " + assignments +
                                         " WHERE rowid = " + NumberText(row.key));
    BindChanges(statement);
    statement.Step();
    RereadRow(row);
}

/// The table has the last word about its values: keys that it assigns, numbers given as texts.
void Recordset::RereadRow(Row& row) {
    Text names;
    for (const Text& column : m_columns)
        names += ", " + Quoted(column);
    if (m_table.empty()) RaiseDatabaseError(kErrorNotSupported);
    auto query =
        Connection()->Prepare("SELECT rowid" + names + " FROM " + m_table + " WHERE rowid = ?", {row.key});
    if (!query.Step()) RaiseDatabaseError(kErrorRecordDeleted);
    row = ReadRow(query);
}

void Recordset::Refresh() try { RereadRow(CurrentRow()); } catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

void Recordset::Delete() try {
    const auto connection = WritableConnection();
    Row& row = CurrentRow();
    connection->Execute("DELETE FROM " + m_table + " WHERE rowid = ?", {row.key});
    row.deleted = true;
    m_editing = Editing::None;
} catch (const SqliteError& error) {
    RaiseDatabaseError(error);
}

std::size_t Recordset::Column(TextView name) const {
    const auto found = std::find_if(m_columns.begin(), m_columns.end(),
                                    [&](const Text& column) { return EqualsNoCase(column, name); });
    if (found == m_columns.end()) RaiseDatabaseError(kErrorItemNotFound);
    return static_cast<std::size_t>(found - m_columns.begin());
}

Value Recordset::Field(TextView name) {
    const std::size_t column = Column(name);
    return m_editing == Editing::None ? CurrentRow().values[column] : m_draft[column];
}

void Recordset::SetField(TextView name, Value value) {
    const std::size_t column = Column(name);
    if (m_editing == Editing::None) RaiseDatabaseError(kErrorUpdateWithoutEdit);
    m_draft[column] = std::move(value);
    m_changed[column] = true;
}

void Recordset::Close() {
    m_connection.reset();
    m_query.reset();
    m_rows.clear();
    m_columns.clear();
    m_position = m_end = 0;
    m_editing = Editing::None;
}

}  // namespace rvl
