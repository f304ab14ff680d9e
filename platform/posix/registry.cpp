#include "platform/registry.h"

#include <unistd.h>

#include "platform/error.h"
#include "platform/identity.h"
#include "platform/latin1_case.h"
#include "platform/posix/workstation_root.h"
#include "platform/sqlite.h"
#include "platform/system_message.h"

namespace rvl::platform {
namespace {

using Intent = SqliteTransaction::Intent;

constexpr std::chrono::seconds kPatience{5};
constexpr const char* kStoreName = "/registry.db";

constexpr std::int64_t kLocalMachineKey = 1;
constexpr std::int64_t kUsersKey = 2;

/// Names keep the spelling they were first written with and are found by their lower-case form. The storage
/// class of the data is its type: TEXT, INTEGER, and BLOB (of UTF-8) for expandable text. An older store thus
/// is like any other, and an older program beside this one reads expandable texts as plain ones.
constexpr const char* kSchema =
    "CREATE TABLE RegistryKeys("
    " KeyID INTEGER PRIMARY KEY,"
    " ParentID INTEGER REFERENCES RegistryKeys ON DELETE CASCADE,"
    " Name TEXT NOT NULL,"
    " Folded TEXT NOT NULL,"
    " UNIQUE(ParentID, Folded));"
    "CREATE TABLE RegistryValues("
    " KeyID INTEGER NOT NULL REFERENCES RegistryKeys ON DELETE CASCADE,"
    " Name TEXT NOT NULL,"
    " Folded TEXT NOT NULL,"
    " Data NOT NULL,"
    " PRIMARY KEY(KeyID, Folded)) WITHOUT ROWID;"
    "INSERT INTO RegistryKeys VALUES(1, NULL, 'HKEY_LOCAL_MACHINE', 'hkey_local_machine');"
    "INSERT INTO RegistryKeys VALUES(2, NULL, 'HKEY_USERS', 'hkey_users');"
    "PRAGMA user_version = 1;";

bool HasSchema(SqliteConnection& store) {
    SqliteStatement version = store.Prepare("PRAGMA user_version");
    return version.Step() && version.Column(0) != SqliteValue(std::int64_t{0});
}

/// Two processes may meet at the first use: the second one finds it done.
void CreateSchema(SqliteConnection& store) {
    SqliteTransaction transaction(store, Intent::Write);
    if (!HasSchema(store)) store.ExecuteScript(kSchema);
    transaction.Commit();
}

/// The rollback journal stays: writes are rare here, and each is on the disk when it returns.
SqliteConnection OpenStore(const std::string& folder) {
    SqliteConnection store(folder + kStoreName, SqliteConnection::Missing::Create, kPatience);
    store.Execute("PRAGMA foreign_keys = ON");
    if (!HasSchema(store)) CreateSchema(store);
    return store;
}

/// A user who may not write to the workstation's registry has his own key in his own root, as hosts with
/// several users need it.
bool HasOwnStore() {
    const std::string& root = WorkstationRoot();
    const std::string shared = root + kStoreName;
    const bool exists = access(shared.c_str(), F_OK) == 0;
    return access(exists ? shared.c_str() : root.c_str(), W_OK) != 0;
}

SqliteConnection& SharedStore() {
    static SqliteConnection store = OpenStore(WorkstationRoot());
    return store;
}

SqliteConnection& StoreOf(RegistryRoot root) {
    static const bool hasOwn = HasOwnStore();
    if (root != RegistryRoot::CurrentUser || !hasOwn) return SharedStore();
    static SqliteConnection own = OpenStore(UsersOwnRoot());
    return own;
}

[[noreturn]] void Raise(int code) {
    throw Error(code, "Registry", SystemMessage(code));
}

int Win32Code(SqliteFailure failure) {
    switch (failure) {
        case SqliteFailure::Locked:
            return 170;  // resource in use
        case SqliteFailure::Forbidden:
            return 5;
        case SqliteFailure::Damaged:
            return 1015;  // registry corrupt
        case SqliteFailure::DiskFull:
            return 112;
        case SqliteFailure::InputOutput:
            return 1016;  // registry I/O failed
        case SqliteFailure::OutOfMemory:
            return 14;
        default:
            return 1009;  // the configuration database is not what it should be
    }
}

/// Runs one operation in a transaction of its own and turns its failures into Win32 codes.
template <class Operation>
auto InTransaction(RegistryRoot root, Intent intent, Operation operation) try {
    SqliteConnection& store = StoreOf(root);
    SqliteTransaction transaction(store, intent);
    auto result = operation(store);
    transaction.Commit();
    return result;
} catch (const SqliteError& error) {
    Raise(Win32Code(error.Failure()));
}

/// Where a key lies: the names on the way down from one of the two stored roots.
struct KeyPath {
    std::int64_t root;
    std::vector<Text> steps;
};

void AppendSteps(std::vector<Text>& steps, const Text& key) {
    for (std::size_t start = 0; start < key.size();) {
        const std::size_t end = std::min(key.find('\\', start), key.size());
        if (end > start) steps.push_back(key.substr(start, end - start));
        start = end + 1;
    }
}

KeyPath PathOfRoot(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return {kLocalMachineKey, {"SOFTWARE", "Classes"}};
        case RegistryRoot::CurrentUser: {
            const Text user = UserName();
            return {kUsersKey, {user.empty() ? ".DEFAULT" : user}};
        }
        case RegistryRoot::LocalMachine:
            return {kLocalMachineKey, {}};
        case RegistryRoot::Users:
            return {kUsersKey, {}};
    }
    Raise(6);  // invalid handle
}

KeyPath PathOf(RegistryRoot root, const Text& key) {
    KeyPath path = PathOfRoot(root);
    AppendSteps(path.steps, key);
    return path;
}

/// A key path without any name is the root itself.
bool IsRoot(const Text& key) {
    return key.find_first_not_of('\\') == Text::npos;
}

std::optional<std::int64_t> FindChild(SqliteConnection& store, std::int64_t parent, const Text& name) {
    SqliteStatement query = store.Prepare("SELECT KeyID FROM RegistryKeys WHERE ParentID = ? AND Folded = ?",
                                          {parent, LowerLatin1(name)});
    if (!query.Step()) return std::nullopt;
    return std::get<std::int64_t>(query.Column(0));
}

std::optional<std::int64_t> FindKey(SqliteConnection& store, const KeyPath& path) {
    std::optional<std::int64_t> key = path.root;
    for (std::size_t step = 0; key && step < path.steps.size(); ++step)
        key = FindChild(store, *key, path.steps[step]);
    return key;
}

std::int64_t MakeKey(SqliteConnection& store, const KeyPath& path) {
    std::int64_t key = path.root;
    for (const Text& name : path.steps) {
        const std::optional<std::int64_t> child = FindChild(store, key, name);
        if (!child)
            store.Execute("INSERT INTO RegistryKeys(ParentID, Name, Folded) VALUES(?, ?, ?)",
                          {key, name, LowerLatin1(name)});
        key = child ? *child : store.LastInsertedRow();
    }
    return key;
}

const ExpandableText* AsExpandable(const RegistryValue& value) {
    return std::get_if<ExpandableText>(&value);
}

SqliteValue StoredForm(const RegistryValue& value) {
    if (const auto* number = std::get_if<std::uint32_t>(&value)) return std::int64_t{*number};
    if (const ExpandableText* expandable = AsExpandable(value)) return expandable->text;
    return std::get<Text>(value);
}

/// A row of the data and whether it is a BLOB.
RegistryValue ValueOf(const SqliteStatement& row) {
    const SqliteValue stored = row.Column(0);
    if (const auto* number = std::get_if<std::int64_t>(&stored)) return static_cast<std::uint32_t>(*number);
    if (row.Column(1) == SqliteValue(std::int64_t{1})) return ExpandableText{std::get<Text>(stored)};
    return std::get<Text>(stored);
}

/// The names that a query finds for a key.
std::vector<Text> NamesBelow(const char* query, RegistryRoot root, const Text& key) {
    return InTransaction(root, Intent::Read, [&](SqliteConnection& store) {
        std::vector<Text> names;
        const std::optional<std::int64_t> found = FindKey(store, PathOf(root, key));
        if (!found) return names;
        SqliteStatement statement = store.Prepare(query, {*found});
        while (statement.Step())
            names.push_back(std::get<Text>(statement.Column(0)));
        return names;
    });
}

}  // namespace

std::optional<RegistryValue> ReadRegistry(RegistryRoot root, const Text& key, const Text& name) {
    return InTransaction(root, Intent::Read, [&](SqliteConnection& store) -> std::optional<RegistryValue> {
        const std::optional<std::int64_t> found = FindKey(store, PathOf(root, key));
        if (!found) return std::nullopt;
        SqliteStatement query = store.Prepare(
            "SELECT Data, typeof(Data) = 'blob' FROM RegistryValues WHERE KeyID = ? AND Folded = ?",
            {*found, LowerLatin1(name)});
        if (!query.Step()) return std::nullopt;
        return ValueOf(query);
    });
}

void WriteRegistry(RegistryRoot root, const Text& key, const Text& name, const RegistryValue& value) {
    InTransaction(root, Intent::Write, [&](SqliteConnection& store) {
        const std::int64_t found = MakeKey(store, PathOf(root, key));
        store.Execute(
            "INSERT INTO RegistryValues(KeyID, Name, Folded, Data)"
            " VALUES(?1, ?2, ?3, CASE ?5 WHEN 1 THEN CAST(?4 AS BLOB) ELSE ?4 END)"
            " ON CONFLICT DO UPDATE SET Data = excluded.Data",
            {found, name, LowerLatin1(name), StoredForm(value),
             std::int64_t{AsExpandable(value) != nullptr}});
        return true;
    });
}

bool DeleteRegistryValue(RegistryRoot root, const Text& key, const Text& name) {
    return InTransaction(root, Intent::Write, [&](SqliteConnection& store) {
        const std::optional<std::int64_t> found = FindKey(store, PathOf(root, key));
        if (!found) return false;
        store.Execute("DELETE FROM RegistryValues WHERE KeyID = ? AND Folded = ?",
                      {*found, LowerLatin1(name)});
        return store.ChangedRows() > 0;
    });
}

bool RegistryKeyExists(RegistryRoot root, const Text& key) {
    if (IsRoot(key)) return true;
    return InTransaction(root, Intent::Read, [&](SqliteConnection& store) {
        return FindKey(store, PathOf(root, key)).has_value();
    });
}

void CreateRegistryKey(RegistryRoot root, const Text& key) {
    InTransaction(root, Intent::Write,
                  [&](SqliteConnection& store) { return MakeKey(store, PathOf(root, key)); });
}

bool DeleteRegistryKey(RegistryRoot root, const Text& key) {
    if (IsRoot(key)) Raise(5);
    return InTransaction(root, Intent::Write, [&](SqliteConnection& store) {
        const std::optional<std::int64_t> found = FindKey(store, PathOf(root, key));
        if (found) store.Execute("DELETE FROM RegistryKeys WHERE KeyID = ?", {*found});
        return found.has_value();
    });
}

std::vector<Text> RegistryValueNames(RegistryRoot root, const Text& key) {
    return NamesBelow("SELECT Name FROM RegistryValues WHERE KeyID = ? ORDER BY Folded", root, key);
}

std::vector<Text> RegistrySubkeys(RegistryRoot root, const Text& key) {
    return NamesBelow("SELECT Name FROM RegistryKeys WHERE ParentID = ? ORDER BY Folded", root, key);
}

}  // namespace rvl::platform
