#include "deploy/local_database.h"

#include "deploy/database_errors.h"
#include "runtime/system_information.h"
#include "tests/deploy/test_database.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

struct Report {
    Text procedure;
    ErrorRecord record;
};

class LocalDatabaseTest : public test::FolderTest, public ErrorSink {
 protected:
    LocalDatabaseTest() {
        InstallErrorSink(this);
        std::filesystem::create_directories(HostFolder() / "app");
        test::CreateDatabaseFile(Path("app\\RVLClientTemplate.mdb"));
    }
    ~LocalDatabaseTest() override { InstallErrorSink(nullptr); }

    void ReportError(TextView procedure, const ErrorRecord& record, bool) override {
        m_reports.push_back({Text(procedure), record});
    }

    LocalDatabase MakeDatabase() {
        return LocalDatabase({Path("app\\RVLClient.exe"), Path("ProgramData\\")}, [this] { ++m_fatalEnds; });
    }

    const Text m_path = Path("ProgramData\\Ravelin\\Client\\RVLClient.mdb");
    std::vector<Report> m_reports;
    int m_fatalEnds = 0;
};

TEST_F(LocalDatabaseTest, FirstStartCreatesItFromTheTemplate) {
    LocalDatabase database = MakeDatabase();
    EXPECT_EQ(database.DatabasePath(), m_path);
    database.InitializeDatabase();
    database.InitializeDatabase();
    EXPECT_EQ(database.GetDatabaseVersion(), 1);
    EXPECT_TRUE(IsNull(database.GetSettingValue("serveraddress")));
    database.CloseDatabase();
    EXPECT_EQ(m_fatalEnds, 0);
    const auto folder = HostFolder() / "ProgramData/Ravelin/Client";
    const auto files = std::filesystem::directory_iterator(folder);
    EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "the database and nothing else";
    auto other = test::OtherConnection(m_path);
    auto count = other.Prepare("SELECT Count(*) FROM Settings");
    ASSERT_TRUE(count.Step());
    EXPECT_EQ(count.Column(0), Value(std::int64_t{1}));
}

TEST_F(LocalDatabaseTest, TakesTheOneBesideTheExecutableFirst) {
    LocalDatabase database = MakeDatabase();
    database.InitializeDatabase();
    test::CreateDatabaseFile(Path("app\\RVLClient.mdb"));
    EXPECT_EQ(database.DatabasePath(), Path("app\\RVLClient.mdb"));
    EXPECT_EQ(LocalDatabase({"Z:\\opt\\rvl.d\\RVLClient", ""}).TemplateDatabasePath(),
              "Z:\\opt\\rvl.d\\RVLClientTemplate.mdb");
}

TEST_F(LocalDatabaseTest, WhatAnInterruptedFirstStartLeftDoesNotMatter) {
    std::filesystem::create_directories(HostFolder() / "ProgramData/Ravelin/Client");
    WriteFile("ProgramData/Ravelin/Client/RVLClient.mdb.new", "half a file");
    std::string log;
    {
        auto other = test::OtherConnection(m_path);
        other.ExecuteScript("PRAGMA journal_mode = WAL; CREATE TABLE Old (A)");
        log = test::ReadHostFile(HostFolder() / "ProgramData/Ravelin/Client/RVLClient.mdb-wal");
    }
    std::filesystem::remove(HostFolder() / "ProgramData/Ravelin/Client/RVLClient.mdb");
    WriteFile("ProgramData/Ravelin/Client/RVLClient.mdb-wal", log);
    EXPECT_FALSE(log.empty());
    MakeDatabase().InitializeDatabase();
    EXPECT_EQ(MakeDatabase().GetDatabaseVersion(), 1);
    EXPECT_EQ(test::ErrorOf([this] { MakeDatabase().OpenRecordset("Old"); }), 3075);
    EXPECT_EQ(m_fatalEnds, 0);
}

TEST_F(LocalDatabaseTest, SettingsAreStoredAtOnce) {
    LocalDatabase database = MakeDatabase();
    database.SetSettingValue("ServerAddress", "O'Brien's");
    EXPECT_EQ(MakeDatabase().GetSettingValue("SERVERADDRESS"), Value("O'Brien's"));
    test::OtherConnection(m_path).Execute("UPDATE Settings SET ServerAddress = NULL");
    EXPECT_TRUE(IsNull(database.GetSettingValue("ServerAddress")));
}

TEST_F(LocalDatabaseTest, RefusesUnknownVersions) {
    MakeDatabase().SetSettingValue("DatabaseVersion", std::int64_t{2});
    LocalDatabase database = MakeDatabase();
    database.InitializeDatabase();
    EXPECT_EQ(m_fatalEnds, 1);
    ASSERT_EQ(m_reports.size(), 2u);
    EXPECT_EQ(m_reports[0].procedure, "GlobalsClient.UpdateDatabaseFormat");
    EXPECT_EQ(m_reports[1].procedure, "Globals.InitializeDatabase");
    for (const Report& report : m_reports) {
        EXPECT_EQ(report.record.Number, -2147211299);
        EXPECT_EQ(report.record.Source, "GlobalsClient.UpdateDatabaseFormat");
        EXPECT_EQ(report.record.Description, "Unknown database version");
    }
    EXPECT_EQ(test::ErrorOf([&] { database.ExecuteSQL("DELETE FROM UserPaths"); }), 3420);
}

TEST_F(LocalDatabaseTest, ReportsWhyItCannotBeOpened) {
    struct Case {
        std::function<void()> spoil;
        std::int32_t number;
        Text description;
    };
    const auto program = HostFolder() / "ProgramData";
    const Case cases[] = {{[&] { std::filesystem::remove(HostFolder() / "app/RVLClientTemplate.mdb"); },
                           -2147211297, "Cannot find \"C:\\test\\app\\RVLClientTemplate.mdb\"."},
                          {[&] {
                               std::filesystem::create_directories(program / "Ravelin/Client");
                               WriteFile("ProgramData/Ravelin/Client/RVLClient.mdb", std::string(3000, 'x'));
                           },
                           3343, "Unrecognized database format."}};
    for (const Case& spoiled : cases) {
        m_reports.clear();
        spoiled.spoil();
        MakeDatabase().InitializeDatabase();
        ASSERT_EQ(m_reports.size(), 1u);
        EXPECT_EQ(m_reports[0].procedure, "Globals.InitializeDatabase");
        EXPECT_EQ(m_reports[0].record.Number, spoiled.number);
        EXPECT_EQ(m_reports[0].record.Description, spoiled.description);
    }
    EXPECT_EQ(m_fatalEnds, 2);
}

TEST_F(LocalDatabaseTest, AFileInTheWayOfItsFolderIsReported) {
    WriteFile("ProgramData", "");
    MakeDatabase().InitializeDatabase();
    ASSERT_EQ(m_reports.size(), 1u);
    EXPECT_NE(m_reports[0].record.Number, 0);
    EXPECT_EQ(m_fatalEnds, 1);
}

TEST_F(LocalDatabaseTest, ReadsDestinationLocations) {
    const std::pair<const char*, std::int32_t> names[] = {
        {"USER_PROFILE", 1}, {"  program_files ", 2}, {"Custom", 3}, {"HOME", 0}};
    for (const auto& [name, code] : names)
        EXPECT_EQ(StringToDestinationLocation(name), code) << name;
    ASSERT_EQ(m_reports.size(), 1u);
    EXPECT_EQ(m_reports[0].record.Description,
              "Assert failed: StringToDestinationLocation: Invalid location \"HOME\"");
}

TEST(ExplainDatabaseError, KnowsWhatCanBeDone) {
    const Text account = "Please ensure that the \"" + FullUsername() + "\" user account has permission to ";
    struct Case {
        std::int32_t number;
        const char* source;
        Text explanation;
    };
    const Case cases[] = {
        {3050, "", account + "create, modify and delete files in the folder containing the database."},
        {3051, "X.Y", account + "modify the database file."},
        {-2147211297, "", account + "read and modify the database file."},
        {429, "Globals.InitializeDatabase", "Ravelin Client requires Microsoft DAO 3.6 (dao360.dll)"},
        {429, "X.Y", ""},
        {3633, "",
         "Ravelin Client requires Microsoft Data Access Components (MDAC).\r\n\r\nMDAC 2.6 can be downloaded "
         "from "
         "https://support.example.com/mdac"},
        {3021, "Globals.InitializeDatabase", ""}};
    for (const Case& known : cases)
        EXPECT_EQ(ExplainDatabaseError(known.number, known.source), known.explanation);
}

}  // namespace
}  // namespace rvl
