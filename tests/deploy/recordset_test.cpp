#include "deploy/recordset.h"

#include <functional>
#include <thread>

#include "deploy/database.h"
#include "deploy/database_texts.h"
#include "platform/process.h"
#include "tests/deploy/test_database.h"
#include "tests/support/child_process.h"

namespace rvl {
namespace {

using test::ErrorOf;

const Text kUmlauts = "DOM\\J\xF6rg", kCapitals = "dom\\J\xD6RG";

class RecordsetTest : public test::FolderTest {
 protected:
    RecordsetTest() {
        test::CreateDatabaseFile(Path("a.mdb"));
        m_database = std::make_unique<Database>(Path("a.mdb"));
    }

    std::unique_ptr<Recordset> Open(const Text& source) { return m_database->OpenRecordset(source); }

    void AddDeployment(std::int64_t frontend, std::int64_t version, const Value& user) {
        const auto rows = Open("DeployedFrontends");
        rows->AddNew();
        rows->SetField("FrontendID", frontend);
        rows->SetField("FrontendVersionID", version);
        rows->SetField("Username", user);
        rows->SetField("FrontendLocation", "C:\\Apps\\");
        rows->SetField("FrontendFilename", Text("\xC4pp.mdb"));
        rows->Update();
    }

    void AddFiles(int count) {
        const auto rows = Open("SELECT * FROM DeployedFrontendFiles");
        for (int index = 0; index < count; ++index) {
            rows->AddNew();
            rows->SetField("DeployedFrontendID", std::int64_t{1});
            rows->SetField("Filename", "file" + std::to_string(index));
            rows->Update();
        }
    }

    int CountOf(const Text& sql) {
        int count = 0;
        for (const auto rows = Open(sql); !rows->IsEOF(); rows->MoveNext())
            ++count;
        return count;
    }

    std::unique_ptr<Database> m_database;
};

TEST_F(RecordsetTest, GivesBackWhatWasStored) {
    const std::vector<std::pair<const char*, Value>> fields = {
        {"DeployedFrontendID", std::int64_t{7}},
        {"fileSize", std::int64_t{5000000000000}},
        {"FILENAME", Text("Data\\O'Brien \xE4\0.mdb", 19)},
        {"md5hash", Value()}};
    {
        const auto rows = Open("DeployedFrontendFiles");
        rows->AddNew();
        for (const auto& [name, value] : fields)
            rows->SetField(name, value);
        EXPECT_EQ(rows->Field("FileSize"), fields[1].second);
        rows->Update();
    }
    m_database = std::make_unique<Database>(Path("a.mdb"));
    const auto rows =
        Open("SELECT MD5Hash, Filename, FileSize, DeployedFrontendID FROM DeployedFrontendFiles");
    for (const auto& [name, value] : fields)
        EXPECT_EQ(rows->Field(name), value) << name;
}

TEST_F(RecordsetTest, EditsOnlyTheFieldsThatWereSet) {
    AddDeployment(3, 12, "DOM\\ann");
    const auto rows = Open("DeployedFrontends"), others = Open("DeployedFrontends");
    rows->Edit();
    rows->SetField("FrontendName", "Orders");
    others->Edit();
    others->SetField("FileCount", Text("4"));
    others->Update();
    rows->Update();
    EXPECT_EQ(rows->Field("FileCount"), Value(std::int64_t{4}));
    EXPECT_EQ(others->Field("FileCount"), Value(std::int64_t{4})) << "the column makes it a number";
    EXPECT_EQ(others->Field("FrontendName"), Value());
    others->Refresh();
    EXPECT_EQ(others->Field("FrontendName"), Value("Orders"));
}

TEST_F(RecordsetTest, FindsTheAppendedRow) {
    AddDeployment(3, 12, Value());
    const auto rows = Open("SELECT * FROM DeployedFrontends");
    EXPECT_EQ(NumberOf(rows->Field("FrontendVersionID")), 12);
    for (const std::int64_t version : {13, 14}) {
        rows->AddNew();
        rows->SetField("FrontendVersionID", version);
        rows->Update();
        EXPECT_EQ(NumberOf(rows->Field("FrontendVersionID")), 12) << "the current row stays";
        const auto key = rows->LastAppendedKey();
        ASSERT_TRUE(rows->FindFirst("DeployedFrontendID = " + std::to_string(key)));
        EXPECT_EQ(NumberOf(rows->Field("DeployedFrontendID")), key);
        EXPECT_EQ(NumberOf(rows->Field("FrontendVersionID")), version);
        rows->MoveFirst();
    }
    EXPECT_FALSE(rows->FindFirst("DeployedFrontendID = 99"));
    EXPECT_TRUE(rows->IsEOF());
}

TEST_F(RecordsetTest, KeysAreNeverUsedAgain) {
    AddDeployment(3, 12, Value());
    m_database->ExecuteSQL("DELETE FROM DeployedFrontends");
    AddDeployment(3, 12, Value());
    EXPECT_EQ(NumberOf(Open("DeployedFrontends")->Field("DeployedFrontendID")), 2);
}

TEST_F(RecordsetTest, MovesThroughWhatWasThereAtTheBeginning) {
    const std::function<void(Recordset&)> disturbances[] = {
        [](Recordset& rows) { rows.Delete(); },
        [this](Recordset& rows) {
            m_database->ExecuteSQL("DELETE FROM DeployedFrontendFiles");
            rows.Delete();
        },
        [this](Recordset&) { AddFiles(1); },
        [](Recordset& rows) {
            rows.AddNew();
            rows.Update();
        }};
    for (const auto& disturb : disturbances) {
        m_database->ExecuteSQL("DELETE FROM DeployedFrontendFiles;");
        AddFiles(5);
        const auto rows = Open("SELECT Filename FROM DeployedFrontendFiles WHERE DeployedFrontendID = 1");
        for (int index = 0; index < 5; ++index, rows->MoveNext()) {
            ASSERT_FALSE(rows->IsEOF());
            EXPECT_EQ(rows->Field("Filename"), Value("file" + std::to_string(index)));
            disturb(*rows);
        }
        EXPECT_TRUE(rows->IsEOF());
    }
}

TEST_F(RecordsetTest, PassesOverTheRowsItDeleted) {
    AddFiles(4);
    const auto rows = Open("DeployedFrontendFiles");
    rows->Delete();
    rows->MoveNext();
    rows->MoveNext();
    rows->Delete();
    rows->MoveFirst();
    EXPECT_EQ(rows->Field("Filename"), Value("file1"));
    rows->MoveNext();
    EXPECT_EQ(rows->Field("Filename"), Value("file3"));
    EXPECT_FALSE(rows->FindFirst("Filename = 'file2'"));
    EXPECT_TRUE(rows->FindFirst("Filename = 'FILE1'"));
}

TEST_F(RecordsetTest, AcceptsTheStatementsOfTheSystem) {
    AddDeployment(3, 12, Value());
    AddDeployment(3, 12, kUmlauts);
    AddDeployment(3, 13, "DOM\\O'Brien");
    AddDeployment(4, 14, kUmlauts);
    const Text user = QuoteSQLString(kCapitals);
    const std::pair<Text, int> statements[] = {
        {"SELECT * FROM DeployedFrontends WHERE FrontendVersionID = 12 AND Username Is Null", 1},
        {"SELECT FrontendVersionID FROM DeployedFrontends WHERE FrontendID = 3 AND Username  = " + user, 1},
        {"SELECT * FROM DeployedFrontends WHERE FrontendVersionID = 13 AND Username = 'dom\\o''brien'", 1},
        {"SELECT * From DeployedFrontends WHERE FrontendVersionID IN (SELECT Max(DeployedFrontends."
         "FrontendVersionID) AS MaxOfFrontendVersionID FROM DeployedFrontends GROUP BY DeployedFrontends."
         "FrontendID) AND Username = 'dom\\J\xD6RG'",
         1},
        {"Select * From DeployedFrontends Where FrontendLocation+FrontendFilename = 'c:\\APPS\\\xE4PP.mdb'",
         4},
        {"SELECT TOP 1 * FROM DeployedFrontends WHERE Username = " + user +
             " ORDER BY FrontendVersionID DESC",
         1},
        {"SELECT * FROM DeployedFrontends;", 4},
        {"UserPaths", 0}};
    for (const auto& [sql, count] : statements)
        EXPECT_EQ(CountOf(sql), count) << sql;
}

TEST_F(RecordsetTest, RefusesWhatCannotBeDone) {
    AddFiles(2);
    struct Case {
        const char* source;
        std::function<void(Recordset&)> action;
        std::int32_t number;
    };
    const char *files = "DeployedFrontendFiles", *none = "UserPaths",
               *grouped = "SELECT Count(*) AS N FROM UserPaths";
    const Case cases[] = {
        {files, [](Recordset& rows) { rows.Field("Nothing"); }, 3265},
        {files, [](Recordset& rows) { rows.SetField("Nothing", Value()); }, 3265},
        {files, [](Recordset& rows) { rows.SetField("Filename", "x"); }, 3020},
        {files, [](Recordset& rows) { rows.Update(); }, 3020},
        {files, [](Recordset& rows) { rows.Edit(), rows.MoveNext(), rows.Update(); }, 3020},
        {files, [](Recordset& rows) { rows.Delete(), rows.Field("Filename"); }, 3167},
        {files, [](Recordset& rows) { rows.FindFirst("Nothing = 1"); }, 3075},
        {files, [](Recordset& rows) { rows.AddNew(), rows.SetField("FileSize", "big"), rows.Update(); },
         3421},
        {files, [](Recordset& rows) { rows.Close(), rows.IsEOF(); }, 3420},
        {files, [this](Recordset& rows) { m_database.reset(), rows.AddNew(); }, 3420},
        {none, [](Recordset& rows) { rows.MoveFirst(); }, 3021},
        {none, [](Recordset& rows) { rows.MoveNext(); }, 3021},
        {none, [](Recordset& rows) { rows.Field("DesktopPath"); }, 3021},
        {none, [](Recordset& rows) { rows.Edit(); }, 3021},
        {none, [](Recordset& rows) { rows.Delete(); }, 3021},
        {grouped, [](Recordset& rows) { rows.Edit(); }, 3027},
        {grouped, [](Recordset& rows) { rows.AddNew(); }, 3027},
        {grouped, [](Recordset& rows) { rows.Delete(); }, 3027},
        {grouped, [](Recordset& rows) { rows.FindFirst("N = 0"); }, 3251},
    };
    for (const Case& refused : cases) {
        m_database = std::make_unique<Database>(Path("a.mdb"));
        const auto rows = Open(refused.source);
        EXPECT_EQ(ErrorOf([&] { refused.action(*rows); }), refused.number);
    }
}

TEST_F(RecordsetTest, ARowThatIsGoneCannotBeChangedButDeletedAgain) {
    AddFiles(1);
    const auto rows = Open("DeployedFrontendFiles");
    rows->Edit();
    rows->SetField("Filename", "x");
    m_database->ExecuteSQL("DELETE FROM DeployedFrontendFiles");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), 3167);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), 0);
}

TEST_F(RecordsetTest, RefusesWrongStatements) {
    AddFiles(1);
    const std::pair<const char*, std::int32_t> queries[] = {
        {"SELEKT * FROM UserPaths", 3075},
        {"Nothing", 3075},
        {"", 3075},
        {"SELECT * FROM UserPaths WHERE FullUsername = 'x", 3075},
        {"DELETE FROM UserPaths", 3219}};
    for (const auto& [sql, number] : queries)
        EXPECT_EQ(ErrorOf([&, text = sql] { Open(text); }), number) << sql;
    const std::pair<Text, std::int32_t> statements[] = {
        {"SELECT * FROM UserPaths", 3065},
        {"DELETE FROM DeployedFrontendFiles; DELETE FROM DeployedFrontendFiles", 3075},
        {Text("DELETE FROM DeployedFrontendFiles\0 WHERE 1 = 0", 46), 3075},
        {"INSERT INTO DeployedFrontends (DeployedFrontendID) VALUES (1), (1)", 3022}};
    for (const auto& [sql, number] : statements)
        EXPECT_EQ(ErrorOf([&, text = sql] { m_database->ExecuteSQL(text); }), number) << sql;
    EXPECT_EQ(CountOf("DeployedFrontendFiles"), 1);
}

TEST_F(RecordsetTest, RefusesFilesThatAreNoDatabase) {
    std::filesystem::create_directories(HostFolder() / "folder.mdb");
    WriteFile("text.mdb", std::string(5000, 'x'));
    WriteFile("empty.mdb", "");
    WriteFile("torn.mdb", "SQLite format 3" + std::string(5000, '\0'));
    const std::pair<Text, std::int32_t> files[] = {{Path("text.mdb"), 3343},
                                                   {Path("empty.mdb"), 3343},
                                                   {Path("torn.mdb"), 3343},
                                                   {Path("missing.mdb"), 3051},
                                                   {Path("folder.mdb"), 3051},
                                                   {"Q:\\a.mdb", 3051},
                                                   {"", 3051}};
    for (const auto& [path, number] : files)
        EXPECT_EQ(ErrorOf([file = path] { Database database(file); }), number) << path;
    EXPECT_FALSE(std::filesystem::exists(HostFolder() / "missing.mdb"));
}

const Text kDatabase = "C:\\test\\a.mdb";

/// Not a test: a process that is killed.
TEST(RecordsetChild, DISABLED_DeletesARow) {
    Database database(kDatabase);
    database.OpenRecordset("DeployedFrontendFiles")->Delete();
    test::KillProcess(platform::ProcessId());
}

TEST_F(RecordsetTest, RowsSurviveAKilledProcess) {
    AddFiles(3);
    m_database.reset();
    EXPECT_EQ(test::ChildProcess("RecordsetChild.DISABLED_DeletesARow").Wait(), test::ChildProcess::kKilled);
    m_database = std::make_unique<Database>(Path("a.mdb"));
    EXPECT_EQ(CountOf("DeployedFrontendFiles"), 2);
}

/// Not a test: a process that writes for a while.
TEST(RecordsetChild, DISABLED_HoldsTheFile) {
    auto connection = test::OtherConnection(kDatabase);
    connection.Execute("PRAGMA journal_mode = WAL");
    connection.Execute("BEGIN IMMEDIATE");
    test::WriteHostFile(test::DriveC() + "/test/held", "");
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    connection.Execute("COMMIT");
}

TEST_F(RecordsetTest, WaitsForAnotherProcessButNotForEver) {
    m_database.reset();
    test::ChildProcess child("RecordsetChild.DISABLED_HoldsTheFile");
    ASSERT_TRUE(test::RunUntil([] { return std::filesystem::exists(HostFolder() / "held"); }));
    m_database = std::make_unique<Database>(Path("a.mdb"), std::chrono::milliseconds(20));
    EXPECT_EQ(ErrorOf([&] { AddFiles(1); }), 3050);
    m_database = std::make_unique<Database>(Path("a.mdb"));
    AddFiles(1);
    EXPECT_EQ(CountOf("DeployedFrontendFiles"), 1);
    EXPECT_EQ(child.Wait(), 0);
}

TEST(Value, Converts) {
    EXPECT_EQ(NullTo(Value(), "none"), "none");
    EXPECT_EQ(NullTo(Value(Text()), "none"), "");
    EXPECT_EQ(NullTo(Value(), 5), 5);
    EXPECT_EQ(NullTo(Value(std::int64_t{7}), 5), 7);
    EXPECT_TRUE(IsNull(EmptyToNull("")));
    EXPECT_EQ(EmptyToNull("x"), Value("x"));
    EXPECT_EQ(TextOf(std::int64_t{-12}), "-12");
    EXPECT_EQ(NumberOf("5000000000"), 5000000000);
    EXPECT_EQ(ErrorOf([] { NumberOf("x"); }), 13);
    EXPECT_EQ(ErrorOf([] { TextOf(Value()); }), 94);
}

}  // namespace
}  // namespace rvl
