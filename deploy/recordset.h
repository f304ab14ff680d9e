#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "deploy/value.h"

namespace rvl {

/// Where the rows of a recordset come from and where its changes go.
struct RecordsetSource {
    std::weak_ptr<platform::SqliteConnection> connection;
    platform::SqliteStatement query;  ///< when there is a table, its first column is the hidden row key
    Text table;                       ///< as it stands in SQL; empty: the rows are read-only
};

/// The rows of a table or a query, one of them the current one. They are read when they are first needed
/// and stay what they were then, whatever happens to the table meanwhile; a recordset that only appends
/// reads none. Rows it appends itself join them at the next MoveFirst or FindFirst.
///
/// Changes are in the file when Update or Delete returns. Raises 3021 where a current row is needed and
/// missing, 3167 where it has been deleted, 3265 for an unknown field, 3027 for changes to read-only rows
/// (3251 for FindFirst and Refresh on them), 3420 after Close or when the database is closed, and what the
/// database itself refuses.
class Recordset {
 public:
    explicit Recordset(RecordsetSource source);

    bool IsEOF();
    void MoveFirst();
    void MoveNext();  ///< like MoveFirst and FindFirst it drops changes that were not stored

    /// Makes the first row that meets a criterion such as "DeployedFrontendID = 12" the current one. False
    /// when there is none; the recordset is then at its end.
    bool FindFirst(const Text& criterion);

    void AddNew();  ///< begins a row of Nulls; the current row stays the current one
    void Edit();
    void Update();  ///< stores what AddNew or Edit began, else raises 3020
    void CancelUpdate() { m_editing = Editing::None; }  ///< forgets what AddNew or Edit began
    void Delete();  ///< a row that somebody else has deleted already is no error

    /// Of the row that is being added or edited, else of the current one. Names have no case.
    Value Field(TextView name);
    void SetField(TextView name, Value value);  ///< raises 3020 without AddNew or Edit

    /// The key of the row that Update appended last.
    std::int64_t LastAppendedKey() const { return m_lastAppendedKey; }

    void Refresh();  ///< reads the current row anew
    void Close();

 private:
    struct Row {
        std::int64_t key = 0;
        std::vector<Value> values;
        bool deleted = false;
    };
    enum class Editing { None, Adding, Changing };

    std::shared_ptr<platform::SqliteConnection> Connection() const;
    std::shared_ptr<platform::SqliteConnection> WritableConnection() const;
    void ReadRows();
    Row ReadRow(platform::SqliteStatement& query) const;
    void RereadRow(Row& row);
    Row& CurrentRow();
    void SkipDeletedRows();
    void Begin(Editing editing, std::vector<Value> values);
    std::size_t Column(TextView name) const;
    std::vector<std::size_t> ChangedColumns() const;
    void BindChanges(platform::SqliteStatement& statement) const;
    void AppendRow();
    void StoreChanges();

    std::weak_ptr<platform::SqliteConnection> m_connection;
    std::optional<platform::SqliteStatement> m_query;  // until the rows are read
    Text m_table;
    std::vector<Text> m_columns;

    std::vector<Row> m_rows;
    std::size_t m_end = 0;  // of the rows that are moved through now
    std::size_t m_position = 0;

    Editing m_editing = Editing::None;
    std::vector<Value> m_draft;
    std::vector<bool> m_changed;
    std::int64_t m_lastAppendedKey = 0;
};

}  // namespace rvl
